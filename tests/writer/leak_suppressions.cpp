// LibreOffice's UNO runtime, loaded into the test program to reach the
// office, keeps its type descriptions, bridges and services for the life of
// the process.
#include "script/writer/writer_document_service.h"

extern "C" const char* __lsan_default_suppressions() { return quillon::unoRuntimeLeakSuppressions(); }
