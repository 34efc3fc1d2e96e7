// Assimp 5.2 leaks a few small objects inside the library while reading some files (ASCII FBX 7.7 among them);
// LeakSanitizer is told to ignore leaks whose allocation comes from libassimp, so that leaks of our own still fail.

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libassimp.so\n";
}
