// LibreOffice's UNO runtime, loaded into the test program to reach the
// office, keeps its type descriptions, bridges and services for the life of
// the process.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libuno_cppu.so\n"
         "leak:libuno_cppuhelpergcc3.so\n"
         "leak:libuno_sal.so\n"
         "leak:libuno_salhelpergcc3.so\n"
         "leak:libunoidllo.so\n"
         "leak:libbinaryurplo.so\n"
         "leak:libuuresolverlo.so\n"
         "leak:libgcc3_uno.so\n";
}
