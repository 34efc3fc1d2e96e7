// Assimp 5.2 leaks a few small objects while reading some files (ASCII FBX 7.7 among them), and a zlib stream
// when a compressed FBX array is broken; LeakSanitizer is told to ignore leaks allocated inside libassimp and the
// zlib it alone uses, so that leaks of our own still fail.

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libassimp.so\nleak:libz.so\n";
}
