#include "kestrel/PreviewCommand.h"

#include "base/FileSystem.h"
#include "base/Number.h"
#include "base/Path.h"
#include "formats/EncodePng.h"
#include "preview/PreviewMesh.h"
#include "preview/RenderPreview.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <system_error>

namespace {

bool ReadSize(const std::string& text, PreviewView& view)
{
    const size_t x = text.find_first_of("xX");
    return x != std::string::npos && ParseInt(text.substr(0, x), view.Width) && ParseInt(text.substr(x + 1), view.Height) &&
           view.Width >= 16 && view.Height >= 16 && view.Width <= 8192 && view.Height <= 8192;
}

bool ReadAngle(const std::string& text, PreviewView& view)
{
    const size_t comma = text.find(',');
    if (!ParseFloat(text.substr(0, comma), view.Yaw) || !std::isfinite(view.Yaw))
        return false;
    return comma == std::string::npos || (ParseFloat(text.substr(comma + 1), view.Pitch) && std::isfinite(view.Pitch));
}

} // namespace

int RunPreview(const PreviewRequest& request, std::FILE* out, std::FILE* err)
{
    PreviewView view;
    if (!ReadSize(request.Size, view)) {
        std::fprintf(err, "kestrel preview: --size '%s' is not WIDTHxHEIGHT between 16 and 8192\n", request.Size.c_str());
        return 2;
    }
    if (!ReadAngle(request.Angle, view)) {
        std::fprintf(err, "kestrel preview: --angle '%s' is not YAW or YAW,PITCH in degrees\n", request.Angle.c_str());
        return 2;
    }
    std::error_code ignored;
    const std::string asset = FromNativePath(std::filesystem::absolute(request.Asset, ignored).string());
    PreviewMesh mesh;
    std::string error;
    if (!LoadPreviewMesh(asset, mesh, error)) {
        std::fprintf(err, "kestrel preview: '%s': %s\n", request.Asset.c_str(), error.c_str());
        return 1;
    }
    const RgbImage picture = RenderPreview(mesh, view);
    const std::string png = EncodePng(picture.Width, picture.Height, picture.Rgb);
    const std::string target = FromNativePath(std::filesystem::absolute(request.Picture, ignored).string());
    if (png.empty() || !WriteFileAtomically(target, png, &error)) {
        std::fprintf(err, "kestrel preview: cannot write '%s': %s\n", request.Picture.c_str(), error.c_str());
        return 1;
    }
    std::fprintf(out, "Drew %zu triangles of '%s' into '%s'\n", mesh.Triangles.size(), request.Asset.c_str(),
                 request.Picture.c_str());
    return 0;
}

void AddPreviewCommand(CLI::App& app)
{
    auto request = std::make_shared<PreviewRequest>();
    CLI::App* command = app.add_subcommand("preview", "Draw an exported asset (.qmesh, .model) into a PNG picture");
    command->add_option("ASSET", request->Asset, "The asset file")->required();
    command->add_option("-o,--output", request->Picture, "The PNG file to write")->required();
    command->add_option("--size", request->Size, "The picture's size in pixels, WIDTHxHEIGHT")->default_val("640x480");
    command->add_option("--angle", request->Angle, "Degrees around the up axis and, after a comma, above the horizon")
        ->default_val("35,25");
    command->callback([request] {
        const int code = RunPreview(*request, stdout, stderr);
        if (code == 0)
            throw CLI::Success();
        throw CLI::RuntimeError(code);
    });
}
