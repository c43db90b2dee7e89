// LibreOffice's UNO runtime, loaded to reach Writer (--writer), keeps its
// type descriptions, bridges and services for the life of the process.
#ifdef QUILLON_HAVE_WRITER
#include "script/writer/writer_document_service.h"

extern "C" const char* __lsan_default_suppressions() { return quillon::unoRuntimeLeakSuppressions(); }
#endif
