// Font configuration keeps caches for the life of the process.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
