// Reads arbitrary bytes as a model file. A model that reads must be sound (Validate finds
// nothing), and what the writer makes of it must read back into a model that writes the very
// same bytes: whatever the reader accepts, the writer keeps.
//
// Two things are set aside before writing, because a round trip changes them by design: bone
// transforms travel as quaternions, which a second trip may round differently, and shader
// assignments come back as one parameter string, which the writer would wrap again.

#include "formats/LoadModel.h"
#include "formats/SaveModel.h"
#include "formats/chunk/VMemoryStreamProvider.h"
#include "model/VMModel.h"
#include "model/Validate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

bool ReadSound(VMModel& model, VMemoryStreamProvider& files, const char* path)
{
    if (!LoadModel(model, path, &files))
        return false;
    if (!Validate(model).empty())
        std::abort();
    if (model.Skeleton) {
        for (VMBone* bone : model.Skeleton->Bones)
            bone->GlobalTransform = bone->LocalTransform = VMTransform::Identity();
    }
    for (VMMaterial* material : model.Materials)
        material->ShaderAssignments.clear();
    return true;
}

const std::string* Write(VMModel& model, VMemoryStreamProvider& files, const char* path)
{
    VSaveParams params;
    params.Streams = &files;
    return SaveModel(model, path, params) ? files.FindFile(path) : nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    VMemoryStreamProvider files;
    files.SetFile("in.model", std::string(reinterpret_cast<const char*>(data), size));
    VMModel model;
    if (!ReadSound(model, files, "in.model"))
        return 0;
    const std::string* written = Write(model, files, "first.model");
    if (written == nullptr)
        return 0;
    const std::string first = *written;
    VMModel again;
    if (!ReadSound(again, files, "first.model"))
        std::abort();
    const std::string* second = Write(again, files, "second.model");
    if (second == nullptr || *second != first)
        std::abort();
    return 0;
}
