// System libraries the window brings in keep caches for the life of the
// process: font configuration, the desktop bus, and the OpenGL drivers under
// a virtual display.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n"
         "leak:libdbus-1\n"
         "leak:libglib-2.0\n"
         "leak:libEGL_mesa\n"
         "leak:libGLX_mesa\n"
         "leak:swrast_dri\n"
         "leak:libLLVM\n"
         "leak:libX11\n"
         "leak:libxcb\n";
}
