#include "plugin/ExportReportPage.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/EncodePng.h"
#include "preview/PreviewMesh.h"
#include "preview/RenderPreview.h"
#include "report/ReportPage.h"
#include "settings/SettingsFile.h"

#include <maya/MFn.h>
#include <maya/MItDag.h>

namespace {

constexpr int TextureSide = 128;

long long SceneMeshCount()
{
    long long count = 0;
    for (MItDag dag(MItDag::kDepthFirst, MFn::kMesh); !dag.isDone(); dag.next())
        ++count;
    return count;
}

} // namespace

bool WriteExportReportPage(const std::string& scene, const std::string& target, const std::vector<VReportEntry>& entries,
                           std::string& error)
{
    VReportPage page;
    page.Scene = scene;
    page.Target = ShownPath(target);
    ReadWholeFile(SettingsFilePath(target), page.Settings);
    page.Phases = TakePhaseTimes();
    page.Entries = entries;

    PreviewMesh mesh;
    std::string unread;
    const bool readBack = LoadPreviewMesh(target, mesh, unread);
    page.Counts = {{"Meshes in the scene", SceneMeshCount()},
                   {"Triangles", static_cast<long long>(mesh.Triangles.size())},
                   {"Vertices", mesh.VertexCount},
                   {"Submeshes", mesh.SubmeshCount},
                   {"Materials", static_cast<long long>(mesh.Materials.size())}};
    for (const PreviewMaterial& material : mesh.Materials) {
        VReportPageMaterial shown;
        shown.Name = material.Name;
        shown.Texture = ShownPath(material.TextureName);
        shown.Colour = material.Colour;
        if (!material.Texture.Rgb.empty()) {
            const RgbImage small = ShrinkImage(material.Texture, TextureSide);
            shown.TexturePng = EncodePng(small.Width, small.Height, small.Rgb);
        }
        page.Materials.push_back(std::move(shown));
    }
    if (readBack) {
        const RgbImage picture = RenderPreview(mesh, PreviewView {});
        page.PreviewPng = EncodePng(picture.Width, picture.Height, picture.Rgb);
    }
    return WriteFileAtomically(JoinPath(DirectoryOf(target), "report.html"), ReportPageHtml(page), &error);
}
