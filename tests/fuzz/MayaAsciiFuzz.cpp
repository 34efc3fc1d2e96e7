// Feeds arbitrary bytes to the Maya ASCII reader as a scene's text and builds what it reads into the stand-in.
// Seed it with the shared .ma scenes (copy them into fuzz-corpus/maya).

#include "importers/ImportResult.h"
#include "importers/mayaascii/ImportMayaAscii.h"

#include <standin/SceneBuilder.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    standin::NewScene();
    ImportResult result;
    ImportMayaAsciiText(std::string_view(reinterpret_cast<const char*>(data), size), std::string(), result);
    return 0;
}
