// "kestrel export" run in-process: the scene loader is handed in, the terminal is a temporary file.

#include "kestrel/ExportCommand.h"
#include "kestrel/PreviewCommand.h"
#include "preview/RenderPreview.h"
#include "kestrel/InfoCommand.h"
#include "kestrel/ImportCommand.h"

#include "base/Path.h"
#include "formats/AnimationChunks.h"
#include "formats/AnimationFileReader.h"
#include "formats/LoadModel.h"
#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"
#include "model/Validate.h"
#include "plugin/PluginModule.h"
#include "settings/ApplicationSettings.h"
#include "importers/ImportScene.h"
#include "tests/SceneFileSkin.h"
#include "tests/UniqueTempFolder.h"
#include "importers/assimp/AssimpContext.h"
#include "kestrel/AnimationEntries.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include "../geometry/lightmap/AtlasChecks.h"
#include "CapturedRun.h"

#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <tinyxml2.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

ImportResult LoadTwoCubes(const std::string&)
{
    standin::NewScene();
    for (int cube = 0; cube < 2; ++cube) {
        const std::string name = cube == 0 ? "near" : "far";
        const MObject transform = standin::CreateNode("transform", name);
        standin::MeshDescription description;
        for (int corner = 0; corner < 8; ++corner)
            description.points.emplace_back(300.0 * cube + 100.0 * (corner & 1), 100.0 * ((corner >> 1) & 1),
                                     100.0 * ((corner >> 2) & 1));
        description.counts = {4, 4, 4, 4, 4, 4};
        description.connects = {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5};
        const MObject shape = standin::CreateMesh(name + "Shape", transform, description);
        standin::Assign(standin::CreateShader("lambert", name + "Stone"), shape);
    }
    ImportResult result;
    result.Ok = true;
    return result;
}

// An arm of two joints along Maya's x with a skinned box around it, waving from frame 1 to 5;
// the importer found the clip "wave".
ImportResult LoadWavingArm(const std::string&)
{
    standin::NewScene();
    const MObject shoulder = standin::CreateNode("joint", "shoulder");
    const MObject hand = standin::CreateNode("joint", "hand", shoulder);
    standin::SetAttr("hand.translate", 100, 0, 0);
    const MObject transform = standin::CreateNode("transform", "arm");
    standin::MeshDescription box;
    for (int corner = 0; corner < 8; ++corner)
        box.points.emplace_back(100.0 * (corner & 1), 10.0 * ((corner >> 1) & 1), 10.0 * ((corner >> 2) & 1));
    box.counts = {4, 4, 4, 4, 4, 4};
    box.connects = {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5};
    const MObject shape = standin::CreateMesh("armShape", transform, box);
    standin::Assign(standin::CreateShader("lambert", "skin"), shape);
    std::vector<std::vector<double>> weights;
    for (int corner = 0; corner < 8; ++corner)
        weights.push_back(corner & 1 ? std::vector<double> {0, 1} : std::vector<double> {1, 0});
    standin::SkinMesh(shape, {shoulder, hand}, weights);
    standin::Animate("shoulder.rotateZ", {{MTime(1.0, MTime::kFilm), 0.0, standin::TangentType::Linear,
                                           standin::TangentType::Linear},
                                          {MTime(5.0, MTime::kFilm), 1.0, standin::TangentType::Linear,
                                           standin::TangentType::Linear}});
    standin::SetPlaybackRange(MTime(1.0, MTime::kFilm), MTime(5.0, MTime::kFilm));
    ImportResult result;
    result.Ok = true;
    result.Clips = {{"wave", 1.0, 5.0}};
    return result;
}

ImportResult LoadCubesWithMissingTexture(const std::string& scene)
{
    ImportResult result = LoadTwoCubes(scene);
    standin::CreateFileTexture("bark", "/nowhere/bark.tga", "nearStone.color");
    return result;
}

// An uncompressed 24-bit TGA of 2 x 2 pixels, stored bottom row first as blue, green, red.
std::string TwoByTwoTga()
{
    std::string tga(18, '\0');
    tga[2] = 2;
    tga[12] = 2;
    tga[14] = 2;
    tga[16] = 24;
    return tga + std::string("\xff\0\0" "\0\xff\0" "\0\0\xff" "\xff\xff\xff", 12);
}

std::string FromBase64(std::string_view text)
{
    const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const size_t digit = digits.find(c);
        if (digit == std::string::npos)
            break;
        bits = (bits << 6) | static_cast<uint32_t>(digit);
        if ((count += 6) >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> count) & 0xff);
        }
    }
    return bytes;
}

void CollectElements(const tinyxml2::XMLElement* element, const char* name, std::vector<const tinyxml2::XMLElement*>& found)
{
    for (; element; element = element->NextSiblingElement()) {
        if (std::string_view(element->Name()) == name)
            found.push_back(element);
        CollectElements(element->FirstChildElement(), name, found);
    }
}

// Loads through the importers, as the command line does.
ImportResult ImportFromFile(const std::string& path)
{
    return ImportScene(path);
}

class ExportCommand : public ::testing::Test {
protected:
    ExportCommand()
    {
        // The command keeps the user's application settings; tests keep theirs apart.
        setenv("XDG_CONFIG_HOME", (m_folder / "config").c_str(), 1);
    }
    int Run(ExportRequest request, const SceneLoader& loader = LoadTwoCubes)
    {
        CapturedRun run;
        const int code = run.Run([&](std::FILE* out, std::FILE* err) { return RunExport(request, loader, out, err); });
        Out = run.Out;
        Err = run.Err;
        return code;
    }
    ExportRequest Request(const std::string& target) const
    {
        ExportRequest request;
        request.Scene = (m_folder / "scene.ma").string();
        request.Target = (m_folder / target).string();
        return request;
    }
    std::filesystem::path Native(const std::string& relative) const { return m_folder / relative; }
    std::string Read(const std::string& relative) const
    {
        std::ifstream in(Native(relative), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    // Exports every shared scene the importers take to shared/NAME/NAME.extension with the
    // settings given and hands on those that loaded; answers how many did.
    int ExportSharedScenes(const std::string& extension, const std::vector<std::string>& settings,
                           const std::function<void(const std::string& name, const ExportRequest&, int code)>& check)
    {
        int exported = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(KESTREL_SHARED_SCENES_DIR)) {
            const std::string scene = entry.path().string();
            if (!entry.is_regular_file() || !CanImportScene(FromNativePath(scene)))
                continue;
            const std::string name = entry.path().stem().string();
            ExportRequest request;
            request.Scene = scene;
            request.Target = Native("shared/" + name + "/" + name + extension).string();
            request.Settings = settings;
            const int code = Run(request, ImportFromFile);
            if (Err.find("cannot load") != std::string::npos)
                continue;
            SCOPED_TRACE(scene);
            check(name, request, code);
            ++exported;
        }
        return exported;
    }
    int Triangles(const std::string& relative) const
    {
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(FromNativePath(Native(relative).string()), mesh));
        return mesh.TriangleCount;
    }

    std::string Out;
    std::string Err;

private:
    UniqueTempFolder m_scratch{"kestrel_export"};
    const std::filesystem::path& m_folder = m_scratch.Native();
};

// A quiet run has no log to show, so it must not go looking for the log viewer either.
TEST_F(ExportCommand, ExportsTheWholeSceneAndSaysWhereUnlessQuiet)
{
    EXPECT_EQ(Run(Request("out/level.qmesh")), 0);
    EXPECT_EQ(Triangles("out/level.qmesh"), 24);
    EXPECT_TRUE(std::filesystem::exists(Native("out/level.qcolmesh")));
    EXPECT_THAT(Out, HasSubstr("*** ExportWorld started ***\n"));
    EXPECT_THAT(Out, HasSubstr("Exported '"));
    EXPECT_TRUE(Err.empty()) << Err;

    ExportRequest request = Request("quiet/level.qmesh");
    request.Quiet = true;
    EXPECT_EQ(Run(request), 0);
    EXPECT_EQ(Triangles("quiet/level.qmesh"), 24);
    EXPECT_EQ(Out, "");
    EXPECT_TRUE(Err.empty()) << Err;
}

TEST_F(ExportCommand, SelectionExportsOnlyTheNamedNodes)
{
    ExportRequest request = Request("sel.qmesh");
    request.Selection = {"far"};
    EXPECT_EQ(Run(request), 0);
    EXPECT_EQ(Triangles("sel.qmesh"), 12);

    // A model takes the selection and the options the same way, into its own settings folder.
    request = Request("sel.model");
    request.Selection = {"far"};
    request.Settings = {"MaxNumBones=7"};
    EXPECT_EQ(Run(request), 0) << Err;
    VMModel model;
    ASSERT_TRUE(LoadModel(model, FromNativePath(request.Target))) << LastError().Text;
    EXPECT_EQ(model.Faces.Count(), 12);
    EXPECT_THAT(Read("sel.model_data/_config.Xportel"), HasSubstr("// MaxNumBones : 7\r\n"));
}

TEST_F(ExportCommand, SetChangesAnOptionAndIsStoredWithTheTarget)
{
    ExportRequest request = Request("nocol.qmesh");
    request.Settings = {"ColMesh=0"};
    EXPECT_EQ(Run(request), 0);
    EXPECT_FALSE(std::filesystem::exists(Native("nocol.qcolmesh")));

    EXPECT_EQ(Run(Request("nocol.qmesh")), 0);
    EXPECT_FALSE(std::filesystem::exists(Native("nocol.qcolmesh")));
}

// Each refusal comes before anything is written and names what was wrong; bad options and targets
// are refused before the scene is even loaded.
TEST_F(ExportCommand, BadRequestsAreRefusedWithTheReason)
{
    const SceneLoader broken = [](const std::string&) {
        ImportResult result;
        result.Error = "not a scene";
        return result;
    };
    struct Refusal {
        const char* Target;
        std::vector<std::string> Settings;
        std::vector<std::string> Selection;
        SceneLoader Loader;
        int Code;
        const char* Reason;
        bool Loads;
    };
    for (const Refusal& refusal : std::vector<Refusal> {
             {"x.qmesh", {"ColourMesh=0"}, {}, LoadTwoCubes, 2, "'ColourMesh' is not an export option", false},
             {"x.qmesh", {"ColMesh"}, {}, LoadTwoCubes, 2, "is not of the form Key=Value", false},
             {"x.qmesh", {}, {"nowhere"}, LoadTwoCubes, 1, "no node named 'nowhere'", true},
             {"level.obj", {}, {}, LoadTwoCubes, 2, "the known extensions are .qmesh", true},
             {"x.qmesh", {}, {}, broken, 1, "not a scene", true}}) {
        SCOPED_TRACE(refusal.Reason);
        ExportRequest request = Request(refusal.Target);
        request.Settings = refusal.Settings;
        request.Selection = refusal.Selection;
        bool loaded = false;
        EXPECT_EQ(Run(request, [&](const std::string& scene) {
                      loaded = true;
                      return refusal.Loader(scene);
                  }),
                  refusal.Code);
        EXPECT_EQ(loaded, refusal.Loads);
        EXPECT_THAT(Err, HasSubstr(refusal.Reason));
        EXPECT_FALSE(std::filesystem::exists(Native(refusal.Target)));
    }
}

// The filed report is printed too.
TEST_F(ExportCommand, PeopleReadNativePathsWhileTheDebugFileAndSideFilesKeepTheSystemNames)
{
    ExportRequest request = Request("dbg/level.qmesh");
    request.Debug = true;
    EXPECT_EQ(Run(request, LoadCubesWithMissingTexture), 0);
    const std::string target = Native("dbg/level.qmesh").string();
    const std::string copy = Native("dbg/Textures/bark.tga").string();
    EXPECT_THAT(Out, HasSubstr("Saving to '" + target + "'...\n"));
    EXPECT_THAT(Out, HasSubstr("'/nowhere/bark.tga' to '" + copy + "'\n"));
    EXPECT_THAT(Out, HasSubstr("Error:\nCould not copy file\n"));
    EXPECT_EQ(Out.find('\\'), std::string::npos) << Out;
    EXPECT_THAT(Read("dbg/debug.txt"), HasSubstr("Opening debug file for " + FromNativePath(target) + "\r\n"));
    EXPECT_THAT(Read("dbg/ErrLog.txt"), HasSubstr("'/nowhere/bark.tga' to '" + copy + "'\r\n"));
    EXPECT_THAT(Read("dbg/level.qmesh_data/materials.xml"), HasSubstr("Textures\\bark.tga"));
}

std::vector<std::string> AnimationsIn(const std::filesystem::path& file)
{
    VAnimationFile animations;
    EXPECT_TRUE(ReadAnimationFile(FromNativePath(file.string()), animations)) << LastError().Text;
    std::vector<std::string> described;
    for (const VAnimFileAnimation& animation : animations.Animations)
        described.push_back(animation.Name + (animation.IsBoneAnimation() ? " bone " : " vertex ") +
                            std::to_string(animation.IsBoneAnimation() ? animation.Positions.KeyCount()
                                                                       : static_cast<int>(animation.DeltaTimes.size())));
    return described;
}

// The clip becomes a bone animation (bones switched on for it), "--anim" adds a muscle animation,
// and both are stored with the target; the next export replaces "wave" by name, ignoring case.
TEST_F(ExportCommand, ClipsAndAnimEntriesAreSampledStoredAndReplacedByName)
{
    ExportRequest request = Request("arm.model");
    request.Clips = true;
    request.Animations = {"reach:2-4:type=muscle"};
    ASSERT_EQ(Run(request, LoadWavingArm), 0) << Err;
    EXPECT_THAT(AnimationsIn(Native("arm.anim")), ::testing::ElementsAre("wave bone 5", "reach vertex 3"));

    request.Clips = false;
    request.Animations = {"WAVE:1-3:motion=x:rot=z"};
    ASSERT_EQ(Run(request, LoadWavingArm), 0) << Err;
    EXPECT_THAT(AnimationsIn(Native("arm.anim")), ::testing::ElementsAre("WAVE bone 3", "reach vertex 3"));
    std::ifstream stored(Native("arm.model_data/_config.Xportel"), std::ios::binary);
    const std::string settings((std::istreambuf_iterator<char>(stored)), std::istreambuf_iterator<char>());
    EXPECT_THAT(settings, HasSubstr("// ExportBones : 1\r\n"));
    EXPECT_THAT(settings, HasSubstr("// NumAnimations: 2\r\n// Animation: WAVE\r\n"));
    EXPECT_THAT(settings, HasSubstr("// AnimRotZ: 1\r\n"));

    // The clips of a scene without animation are none, and the run says so.
    ExportRequest still = Request("still.model");
    still.Clips = true;
    EXPECT_EQ(Run(still), 0) << Err;
    EXPECT_THAT(Err, HasSubstr("kestrel export: warning: --clips: the scene is not animated\n"));
}

// A process that runs several exports (a test binary, a host script) gets each as if it were the
// first: no debug file left switched on, no root bone remembered from another scene.
TEST_F(ExportCommand, ALaterRunInTheSameProcessKeepsNothingOfAnEarlierOne)
{
    ExportRequest first = Request("first/arm.model");
    first.Debug = true;
    first.Settings = {"ExportBones=1"};
    ASSERT_EQ(Run(first, LoadWavingArm), 0) << Err;
    ASSERT_TRUE(std::filesystem::exists(Native("first/debug.txt")));
    EXPECT_EQ(TheApplicationSettings().DebugPrint, 0);
    ASSERT_THAT(Read("first/arm.model_data/_config.Xportel"), HasSubstr("// RootBoneName : shoulder\r\n"));

    ASSERT_EQ(Run(Request("second/level.qmesh")), 0) << Err;
    EXPECT_FALSE(std::filesystem::exists(Native("second/debug.txt")));
    EXPECT_THAT(Read("second/level.qmesh_data/_config.Xportel"), HasSubstr("// RootBoneName : \r\n"));
}

struct BadEntry {
    const char* Entry;
    const char* Reason;
};

class MalformedAnimEntry : public ExportCommand, public ::testing::WithParamInterface<BadEntry> {};

TEST_P(MalformedAnimEntry, IsRefusedBeforeLoadingWithTheReason)
{
    ExportRequest request = Request("x.model");
    request.Animations = {GetParam().Entry};
    EXPECT_EQ(Run(request), 2);
    EXPECT_EQ(Err, std::string("kestrel export: --anim '") + GetParam().Entry + "': " + GetParam().Reason + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Entries, MalformedAnimEntry,
    ::testing::Values(
        BadEntry {"walk", "it is not of the form NAME:START-END[:loop][:type=bone|muscle|morph][:motion=xyz][:rot=x|y|z]"},
        BadEntry {"walk:9-3", "the range must start at frame 0 or later and end no earlier than it starts"},
        BadEntry {"walk:1-9:type=dance", "'type=dance': the type is bone, muscle or morph"},
        BadEntry {"walk:1-9:rot=xy", "'rot=xy': rot names one axis: x, y or z"},
        BadEntry {"smile:4-4:type=morph:loop", "a morph target is one pose and cannot loop"}));

TEST_F(ExportCommand, ReportPageShowsTheIssuesWithWhatTheyNameTheTexturesAndAPreviewThatDecodes)
{
    std::filesystem::create_directories(Native("src"));
    std::ofstream(Native("src/wood.tga"), std::ios::binary) << TwoByTwoTga();
    const std::string wood = Native("src/wood.tga").string();
    const SceneLoader scene = [&](const std::string& path) {
        ImportResult result = LoadCubesWithMissingTexture(path);
        standin::CreateFileTexture("wood", wood, "farStone.color");
        return result;
    };
    ASSERT_EQ(Run(Request("page/level.qmesh"), scene), 0) << Err;

    tinyxml2::XMLDocument page;
    const std::string html = Read("page/report.html");
    ASSERT_EQ(page.Parse(html.c_str(), html.size()), tinyxml2::XML_SUCCESS) << page.ErrorStr();
    std::vector<const tinyxml2::XMLElement*> items;
    CollectElements(page.RootElement(), "li", items);
    std::vector<std::string> texts;
    for (const tinyxml2::XMLElement* item : items)
        texts.emplace_back(item->GetText());
    // The statistics are not filed in a batch export, but the page has them after the errors.
    EXPECT_EQ(texts, (std::vector<std::string> {"'/nowhere/bark.tga' to '" + Native("page/Textures/bark.tga").string() + "'",
                                                 "Strips and lists: 2", "Materials: 2", "Vis areas: 0"}));
    EXPECT_THAT(html, HasSubstr("<h3>Errors (1)</h3>\n<div class=\"issue error\"><b>error</b>: Could not copy file"));
    EXPECT_THAT(html, HasSubstr("<h3>Information (1)</h3>\n<div class=\"issue information\"><b>information</b>: "
                                "Triangle stripping and listing statistics"));
    EXPECT_THAT(html, HasSubstr("<p>The following files could not be copied:</p>"));
    EXPECT_THAT(html, HasSubstr("<b>nearStone</b><br/>Textures/bark.tga</div>"));

    std::vector<const tinyxml2::XMLElement*> pictures;
    CollectElements(page.RootElement(), "img", pictures);
    std::map<std::string, std::string> pngs;
    for (const tinyxml2::XMLElement* picture : pictures)
        pngs[picture->Attribute("alt")] = FromBase64(std::string_view(picture->Attribute("src")).substr(22));
    ASSERT_EQ(pngs.size(), 2u);
    for (const auto& [alt, png] : pngs) {
        std::ofstream(Native("decoded.png"), std::ios::binary | std::ios::trunc) << png;
        RgbImage image;
        std::string error;
        ASSERT_TRUE(DecodeImageFile(Native("decoded.png").string(), image, error)) << alt << ": " << error;
        if (alt == "Textures/wood.tga")
            EXPECT_EQ(image.Rgb, std::vector<uint8_t>({255, 0, 0, 255, 255, 255, 0, 0, 255, 0, 255, 0})) << alt;
        else
            EXPECT_EQ(std::make_pair(alt, image.Width), std::make_pair(std::string("Preview of the asset"), 640));
    }

    ExportRequest quiet = Request("page/level.qmesh");
    quiet.ReportPage = false;
    std::filesystem::remove(Native("page/report.html"));
    EXPECT_EQ(Run(quiet, scene), 0);
    EXPECT_FALSE(std::filesystem::exists(Native("page/report.html")));
}

// Chromium as Debian ships it, started bare: no network, no profile of the user's.
TEST_F(ExportCommand, ReportPageLoadsInAHeadlessBrowserWithoutConsoleErrorsAndShowsThePreview)
{
    if (!std::filesystem::exists("/usr/bin/chromium"))
        GTEST_SKIP() << "chromium is not installed";
    ExportRequest request = Request("crate/crate.qmesh");
    request.Scene = KESTREL_SOURCE_DIR "/examples/crate/crate.obj";
    ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;

    const std::string command =
        "timeout 120 /usr/bin/chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
        "--disable-background-networking --disable-component-update --disable-sync --hide-scrollbars "
        "--force-device-scale-factor=1 --window-size=1000,1400 --enable-logging=stderr --v=0 --user-data-dir='" +
        Native("profile").string() + "' --screenshot='" + Native("shot.png").string() + "' 'file://" +
        Native("crate/report.html").string() + "' >'" + Native("browser.log").string() + "' 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << Read("browser.log");
    EXPECT_THAT(Read("browser.log"), Not(HasSubstr("CONSOLE")));

    const std::string html = Read("crate/report.html");
    const size_t data = html.find("alt=\"Preview of the asset\" src=\"data:image/png;base64,");
    ASSERT_NE(data, std::string::npos);
    std::ofstream(Native("preview.png"), std::ios::binary) << FromBase64(std::string_view(html).substr(html.find(',', data) + 1));
    RgbImage preview;
    RgbImage shot;
    std::string error;
    ASSERT_TRUE(DecodeImageFile(Native("preview.png").string(), preview, error)) << error;
    ASSERT_TRUE(DecodeImageFile(Native("shot.png").string(), shot, error)) << error;
    // A row of the preview's middle, pixel for pixel somewhere on the screen.
    const size_t run = 64;
    const size_t rowStart = (static_cast<size_t>(preview.Height / 2) * static_cast<size_t>(preview.Width) +
                             static_cast<size_t>(preview.Width / 2) - run / 2) * 3;
    const std::string_view needle(reinterpret_cast<const char*>(&preview.Rgb[rowStart]), run * 3);
    bool shown = false;
    for (int y = 0; y < shot.Height && !shown; ++y) {
        const std::string_view row(reinterpret_cast<const char*>(&shot.Rgb[static_cast<size_t>(y) * static_cast<size_t>(shot.Width) * 3]),
                                   static_cast<size_t>(shot.Width) * 3);
        for (size_t at = row.find(needle); at != std::string_view::npos && !shown; at = row.find(needle, at + 1))
            shown = at % 3 == 0;
    }
    EXPECT_TRUE(shown);
}

TEST_F(ExportCommand, PreviewOfTheExampleAssetsFillsThePictureAndTurnsWithTheAngle)
{
    const PreviewMesh nothing;
    const RgbImage background = RenderPreview(nothing, PreviewView {});
    for (const char* target : {"crate/crate.qmesh", "pillar/pillar.model"}) {
        SCOPED_TRACE(target);
        const std::string name = std::filesystem::path(target).stem().string();
        ExportRequest request = Request(target);
        request.Scene = KESTREL_SOURCE_DIR "/examples/" + name + "/" + name + ".obj";
        ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;
        std::vector<RgbImage> pictures;
        for (const char* angle : {"35,25", "125,-10"}) {
            PreviewRequest preview {Native(target).string(), Native(name + ".png").string(), "640x480", angle};
            std::FILE* out = std::tmpfile();
            EXPECT_EQ(RunPreview(preview, out, stderr), 0);
            std::fclose(out);
            RgbImage picture;
            std::string error;
            ASSERT_TRUE(DecodeImageFile(preview.Picture, picture, error)) << error;
            ASSERT_EQ(picture.Rgb.size(), background.Rgb.size());
            pictures.push_back(std::move(picture));
        }
        const auto differing = [](const RgbImage& a, const RgbImage& b) {
            size_t count = 0;
            for (size_t pixel = 0; pixel < a.Rgb.size(); pixel += 3)
                count += !std::equal(&a.Rgb[pixel], &a.Rgb[pixel] + 3, &b.Rgb[pixel]);
            return static_cast<double>(count) / static_cast<double>(a.Rgb.size() / 3);
        };
        const double covered = differing(pictures[0], background);
        EXPECT_GT(covered, 0.10);
        EXPECT_LT(covered, 0.90);
        EXPECT_GT(differing(pictures[0], pictures[1]), 0.05);
    }
}

TEST(PreviewCommand, RefusesWhatItCannotReadWithTheReason)
{
    const auto refusal = [](const PreviewRequest& request, int code) {
        std::FILE* err = std::tmpfile();
        EXPECT_EQ(RunPreview(request, stdout, err), code);
        std::string text(256, '\0');
        std::rewind(err);
        text.resize(std::fread(text.data(), 1, text.size(), err));
        std::fclose(err);
        return text;
    };
    EXPECT_EQ(refusal({"a.qmesh", "a.png", "640", "35"}, 2),
              "kestrel preview: --size '640' is not WIDTHxHEIGHT between 16 and 8192\n");
    EXPECT_EQ(refusal({"a.qmesh", "a.png", "640x480", "35,up"}, 2),
              "kestrel preview: --angle '35,up' is not YAW or YAW,PITCH in degrees\n");
    EXPECT_EQ(refusal({"level.obj", "a.png", "640x480", "35"}, 1),
              "kestrel preview: 'level.obj': only .qmesh and .model files can be drawn\n");
    EXPECT_THAT(refusal({"/nowhere/a.model", "a.png", "640x480", "35"}, 1),
                HasSubstr("kestrel preview: '/nowhere/a.model': Failed to open file"));
}

TEST_F(ExportCommand, LightmapPictureIsDrawnForEachMaterialOfTheAtlasAndRefusedWithoutOne)
{
    ExportRequest request = Request("lit.qmesh");
    request.Settings = {"LightmapUVs=1"};
    request.LightmapPicture = Native("atlas.png").string();
    EXPECT_EQ(Run(request), 0) << Err;
    // The two cubes have a shader each: one picture per material, numbered.
    for (const char* name : {"atlas.0.png", "atlas.1.png"}) {
        std::ifstream in(Native(name), std::ios::binary);
        std::string head(24, '\0');
        in.read(head.data(), 24);
        EXPECT_EQ(head.substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8)) << name;
        // The width in the header: a pixel per texel of the atlas.
        EXPECT_EQ(head.substr(16, 4), std::string("\0\0\x08\0", 4)) << name;
    }
    EXPECT_THAT(Out, HasSubstr("Lightmap atlas of material 'nearStone' drawn to '"));
    EXPECT_TRUE(Err.empty()) << Err;

    // Without lightmap UVs there is nothing to draw.
    request = Request("unlit.qmesh");
    request.Settings = {"LightmapUVs=0"};
    request.LightmapPicture = Native("unlit.png").string();
    EXPECT_EQ(Run(request), 1);
    EXPECT_THAT(Err, HasSubstr("has no lightmap UVs to draw; export with --set LightmapUVs=1"));
    EXPECT_FALSE(std::filesystem::exists(Native("unlit.png")));
    EXPECT_FALSE(std::filesystem::exists(Native("unlit.0.png")));
}

// The atlases of a real textured scene, read back from the file and drawn texel by texel.
TEST_F(ExportCommand, SharedTexturedSceneCopiesItsTextureAndItsLightmapAtlasesKeepTheirGuttersAndStretch)
{
    const std::filesystem::path scene =
        std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "gltf/KenneyCity/building-small-a.glb";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    ExportRequest request;
    request.Scene = scene.string();
    request.Target = Native("lit/building.qmesh").string();
    request.Settings = {"LightmapUVs=1"};
    ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;
    EXPECT_THAT(Out, Not(HasSubstr("AtlasCreate failed")));
    EXPECT_TRUE(std::filesystem::exists(Native("lit/Textures/colormap.png")));
    EXPECT_TRUE(std::filesystem::exists(Native("lit/building.qcolmesh")));
    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh(FromNativePath(request.Target), mesh));
    EXPECT_THAT(DescribeStaticMesh(mesh), HasSubstr("Second UV: ("));
    for (size_t material = 0; material < mesh.Materials.size(); ++material) {
        std::vector<float> positions;
        std::vector<float> uvs;
        std::vector<uint32_t> corners;
        for (const VStaticMeshSubmesh& submesh : mesh.Submeshes) {
            if (submesh.Material != static_cast<int32_t>(material))
                continue;
            for (int32_t i = submesh.RenderFirstIndex; i < submesh.RenderFirstIndex + submesh.RenderIndexCount; ++i) {
                const uint32_t vertex = mesh.Indices[static_cast<size_t>(i)];
                const VStaticMeshVertex& v = mesh.Vertices[vertex];
                positions.insert(positions.end(), std::begin(v.Position), std::end(v.Position));
                uvs.insert(uvs.end(), std::begin(v.SecondUV), std::end(v.SecondUV));
                corners.push_back(vertex);
            }
        }
        AtlasFigures figures;
        EXPECT_EQ(CheckAtlas(positions, uvs, corners, 2048, 5, 0.1, figures), "") << mesh.Materials[material]->Name;
    }
}

// The scene names its images by absolute paths of the machine it was saved on; they lie beside it here.
TEST_F(ExportCommand, MayaAsciiSceneExportsWithTheTexturesFoundBesideIt)
{
    const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "maya_ascii" / "maya-usd" /
                                        "UsdExportUVSetMappingsTest" / "UsdExportUVSetMappingsTest.ma";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";
    ExportRequest request;
    request.Scene = scene.string();
    request.Target = Native("uv/uv.qmesh").string();
    ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;
    EXPECT_GT(Triangles("uv/uv.qmesh"), 0);
    EXPECT_TRUE(std::filesystem::exists(Native("uv/Textures/red.png")));
    EXPECT_TRUE(std::filesystem::exists(Native("uv/Textures/green.png")));
}

TEST_F(ExportCommand, EveryStaticSceneOfTheSharedSetExports)
{
    const std::filesystem::path scenes = KESTREL_SHARED_SCENES_DIR;
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    const int exported = ExportSharedScenes(".qmesh", {}, [&](const std::string&, const ExportRequest& request, int code) {
        EXPECT_EQ(code, 0) << Err;
        const std::filesystem::path target = request.Target;
        EXPECT_TRUE(std::filesystem::exists(target));
        EXPECT_TRUE(std::filesystem::exists(target.string() + "_data/_config.Xportel"));
        EXPECT_TRUE(std::filesystem::exists(target.string() + "_data/materials.xml"));
        EXPECT_TRUE(std::filesystem::exists(target.string() + "_data/resources.xml"));
    });
    EXPECT_GT(exported, 20);
}

TEST_F(ExportCommand, EverySharedSceneExportsAsAModelAndTheSkinnedOnesKeepTheirSkins)
{
    const std::filesystem::path scenes = KESTREL_SHARED_SCENES_DIR;
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    int skinned = 0;
    const int exported = ExportSharedScenes(".model", {"ExportBones=TRUE"}, [&](const std::string&,
                                                                               const ExportRequest& request, int code) {
        ASSERT_EQ(code, 0) << Err;
        VMModel model;
        ASSERT_TRUE(LoadModel(model, FromNativePath(request.Target))) << LastError().Text;
        EXPECT_THAT(Validate(model), ::testing::IsEmpty());
        // A file without a skin gives a boneless model; a skinned one keeps its skeleton.
        ASSERT_EQ(model.Skeleton != nullptr, SceneFileDeclaresSkin(request.Scene));
        if (!model.Skeleton)
            return;
        ++skinned;
        for (const VMSkinVertex* vertex : model.Vertices) {
            float sum = 0.0f;
            for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot)
                sum += vertex->InfluenceWeights[slot];
            ASSERT_NEAR(sum, 1.0f, 1e-4f) << "vertex " << vertex->Index;
        }
    });
    EXPECT_GT(exported, 20);
    EXPECT_GE(skinned, 14);
}

// The house example: two rooms joined by a door, a corridor beyond an arch; both doorways are
// portal nodes, the screen in the second room an anti-portal.
TEST_F(ExportCommand, HouseExampleGetsAZoneForEachRoomJoinedByItsPortalsOnlyWithVisibilityOn)
{
    ExportRequest request;
    request.Scene = std::string(KESTREL_SOURCE_DIR) + "/examples/house/house.gltf";
    request.Target = Native("vis/house.qmesh").string();
    request.Settings = {"ComputeVisibility=1"};
    ASSERT_EQ(Run(request, ImportFromFile), 0);
    EXPECT_THAT(Out, HasSubstr("Calculating visibility completed..."));

    VMWShapeInstance3DCollection shapes;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(FromNativePath(Native("vis/house.qmesh_data/visibility.xml").string()), shapes, error), 0)
        << error;
    std::map<std::string, std::set<std::string>> leadsTo;
    for (const auto& zone : shapes.Shapes) {
        EXPECT_FALSE(static_cast<const VMWVisibilityZoneInstance&>(*zone).SubMeshIndices.empty()) << zone->Name;
        for (const auto& child : zone->Children) {
            const auto& portal = static_cast<const VMWPortalInstance&>(*child);
            ASSERT_TRUE(portal.TargetZone && portal.TargetPortal) << portal.Name;
            EXPECT_EQ(portal.TargetPortal->TargetPortal, &portal);
            leadsTo[zone->Name].insert(portal.TargetZone->Name);
        }
    }
    EXPECT_EQ(leadsTo, (std::map<std::string, std::set<std::string>> {
                           {"VisZone_RoomA", {"VisZone_RoomB"}},
                           {"VisZone_RoomB", {"VisZone_RoomA", "VisZone_Corridor"}},
                           {"VisZone_Corridor", {"VisZone_RoomB"}}}));
    EXPECT_TRUE(std::filesystem::exists(Native("vis/house.qmesh_data/_debug.VISINFO")));

    CapturedRun info;
    EXPECT_EQ(info.Run([&](std::FILE* out, std::FILE* err) { return RunInfo(request.Target, out, err); }), 0);
    EXPECT_THAT(info.Out, HasSubstr("Visibility: 3 zones, 4 portals\n  zone VisZone_RoomB: box"));

    // Without visibility the builder still takes the portal nodes, but it never runs and neither
    // file is written.
    request.Target = Native("plain/house.qmesh").string();
    request.Settings = {"ComputeVisibility=-1"};
    request.Debug = true;
    ASSERT_EQ(Run(request, ImportFromFile), 0);
    EXPECT_THAT(Out, Not(HasSubstr("Calculating visibility")));
    EXPECT_FALSE(std::filesystem::exists(Native("plain/house.qmesh_data/visibility.xml")));
    EXPECT_FALSE(std::filesystem::exists(Native("plain/house.qmesh_data/_debug.VISINFO")));
    std::ifstream trace(Native("plain/debug.txt"), std::ios::binary);
    const std::string debug((std::istreambuf_iterator<char>(trace)), std::istreambuf_iterator<char>());
    EXPECT_THAT(debug, HasSubstr("#portals=3\r\n0  OK.\r\n1  OK.\r\n2  OK.\r\n"));
    EXPECT_THAT(debug, HasSubstr("Freeing visibility builder...\r\n"));
}

// The static mesh's triangles as sets of corners rounded to hundredths: the way back may renumber,
// reorder and rewind them.
std::multiset<std::array<std::array<long, 3>, 3>> TriangleSet(const std::filesystem::path& native)
{
    VStaticMeshFile mesh;
    EXPECT_TRUE(ReadStaticMesh(FromNativePath(native.string()), mesh)) << LastError().Text;
    std::multiset<std::array<std::array<long, 3>, 3>> triangles;
    for (size_t first = 0; first + 2 < mesh.Indices.size(); first += 3) {
        std::array<std::array<long, 3>, 3> triangle {};
        for (size_t corner = 0; corner < 3; ++corner)
            for (size_t axis = 0; axis < 3; ++axis)
                triangle[corner][axis] = std::lround(mesh.Vertices[mesh.Indices[first + corner]].Position[axis] * 100.0f);
        std::sort(triangle.begin(), triangle.end());
        triangles.insert(triangle);
    }
    return triangles;
}

class ImportCommand : public ExportCommand, public ::testing::WithParamInterface<const char*> {};

TEST_P(ImportCommand, ExportedStaticMeshGoesThroughTheSceneFileAndBackWithTheSameTriangles)
{
    ASSERT_EQ(Run(Request("first.qmesh")), 0);
    const std::string scene = Native(std::string("viewer/level") + GetParam()).string();

    std::FILE* out = std::tmpfile();
    ASSERT_EQ(RunImport(Native("first.qmesh").string(), scene, out, stderr), 0);
    std::fclose(out);

    ExportRequest again;
    again.Scene = scene;
    again.Target = Native("again.qmesh").string();
    ASSERT_EQ(Run(again, ImportFromFile), 0) << Err;
    EXPECT_EQ(TriangleSet(Native("again.qmesh")), TriangleSet(Native("first.qmesh")));
}

INSTANTIATE_TEST_SUITE_P(SceneFormats, ImportCommand, ::testing::Values(".glb", ".fbx", ".obj", ".dae"),
                         [](const auto& format) { return std::string(format.param + 1); });

TEST_F(ExportCommand, ImportRefusesAssetsAndScenesOfOtherKinds)
{
    ASSERT_EQ(Run(Request("first.qmesh")), 0);
    std::FILE* err = std::tmpfile();
    EXPECT_EQ(RunImport(Native("first.qmesh").string(), Native("level.blend").string(), stdout, err), 1);
    EXPECT_EQ(RunImport(Native("first.anim").string(), Native("level.glb").string(), stdout, err), 1);
    std::rewind(err);
    char text[512] = {};
    std::fread(text, 1, sizeof text - 1, err);
    std::fclose(err);
    EXPECT_THAT(text, HasSubstr("level.blend': scenes are written as .glb, .fbx, .obj, .dae\n"));
    EXPECT_THAT(text, HasSubstr("first.anim': only static meshes (.qmesh), collision meshes (.qcolmesh), models (.model)"));
    EXPECT_FALSE(std::filesystem::exists(Native("level.glb")));
}

TEST_F(ExportCommand, EveryAnimatedSharedSceneExportsItsClipsOneKeyAFrameAndInfoReadsThemBack)
{
    const std::filesystem::path scenes = KESTREL_SHARED_SCENES_DIR;
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    std::set<std::string> animated;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(scenes)) {
        const std::string scene = entry.path().string();
        if (!entry.is_regular_file() || !CanImportScene(FromNativePath(scene)))
            continue;
        const ImportResult import = ImportScene(FromNativePath(scene));
        if (!import.Ok || import.Clips.empty())
            continue;
        SCOPED_TRACE(scene);
        const std::string name = entry.path().stem().string();
        ExportRequest request;
        request.Scene = scene;
        request.Target = Native("clips/" + name + "/" + name + ".model").string();
        request.Clips = true;
        ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;

        VAnimationFile file;
        const std::string anim = Native("clips/" + name + "/" + name + ".anim").string();
        ASSERT_TRUE(ReadAnimationFile(FromNativePath(anim), file)) << LastError().Text;
        std::vector<std::string> skipped;
        const std::vector<VAnimationDescription> entries = ClipEntries(import.Clips, kAnimTypeBone, skipped);
        ASSERT_EQ(file.Animations.size(), import.Clips.size());
        for (size_t c = 0; c < entries.size(); ++c) {
            const VAnimFileAnimation& animation = file.Animations[c];
            EXPECT_EQ(animation.Name, import.Clips[c].Name);
            const size_t keys = animation.IsBoneAnimation() ? animation.Positions.Times.size() : animation.DeltaTimes.size();
            EXPECT_EQ(keys, static_cast<size_t>(entries[c].RangeEnd - entries[c].RangeStart + 1)) << animation.Name;
        }
        if (name == "AnimatedMorphCube") { // its morph targets move the cube's vertices
            EXPECT_TRUE(file.Animations.at(0).Has(ChunkVMSK));
        }
        std::FILE* out = std::tmpfile();
        EXPECT_EQ(RunInfo(anim, out, out), 0);
        std::fclose(out);
        animated.insert(name);
    }
    for (const char* name : {"CesiumMan", "Fox", "SimpleSkin", "AnimatedMorphCube", "maya_game_sausage_7500_binary_wiggle",
                             "maya_kenney_character_7700_binary", "library_animations", "ComplexAnim1"})
        EXPECT_TRUE(animated.count(name)) << name;
}

// The rotation and translation keys of every joint below another joint, as Assimp reads them from the file,
// against the bone tracks at the whole frames where keys fall: both hold each bone's pose relative to its parent.
TEST_F(ExportCommand, BonePosesAtTheFilesKeyTimesEqualTheFilesKeys)
{
    const std::filesystem::path scenes = KESTREL_SHARED_SCENES_DIR;
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    for (const char* relative : {"gltf/CesiumMan/CesiumMan.gltf", "gltf/Fox/Fox.glb", "gltf/SimpleSkin/SimpleSkin.gltf"}) {
        const std::filesystem::path scene = scenes / relative;
        SCOPED_TRACE(relative);
        ExportRequest request;
        request.Scene = scene.string();
        // A target of its own: the animations stored with a target stay in its next export.
        const std::string name = scene.stem().string();
        request.Target = Native("poses/" + name + ".model").string();
        request.Clips = true;
        ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;
        VAnimationFile file;
        ASSERT_TRUE(ReadAnimationFile(FromNativePath(Native("poses/" + name + ".anim").string()), file))
            << LastError().Text;
        const ImportResult import = ImportScene(FromNativePath(scene.string()));
        std::vector<std::string> skipped;
        const std::vector<VAnimationDescription> entries = ClipEntries(import.Clips, kAnimTypeBone, skipped);
        Assimp::Importer importer;
        const aiScene* source = importer.ReadFile(scene.string(), 0);
        ASSERT_NE(source, nullptr);
        int compared = 0;
        for (unsigned int a = 0; a < source->mNumAnimations; ++a) {
            const aiAnimation& clip = *source->mAnimations[a];
            const VAnimFileAnimation& animation = file.Animations.at(a);
            double first = INFINITY;
            for (const aiNodeAnim* channel : std::span(clip.mChannels, clip.mNumChannels))
                for (const double tick : {channel->mNumPositionKeys ? channel->mPositionKeys[0].mTime : INFINITY,
                                          channel->mNumRotationKeys ? channel->mRotationKeys[0].mTime : INFINITY,
                                          channel->mNumScalingKeys ? channel->mScalingKeys[0].mTime : INFINITY})
                    first = std::min(first, tick);
            // The key of the bone tracks at a time of the file; -1 between frames.
            const auto keyAt = [&](double tick) {
                const double frame = import.Clips[a].StartFrame + (tick - first) / clip.mTicksPerSecond * 24.0;
                return std::abs(frame - std::round(frame)) > 1e-3 ? -1 : static_cast<int>(std::lround(frame)) - entries[a].RangeStart;
            };
            for (unsigned int c = 0; c < clip.mNumChannels; ++c) {
                const aiNodeAnim& channel = *clip.mChannels[c];
                const aiNode* node = source->mRootNode->FindNode(channel.mNodeName);
                int bone = -1;
                for (const VMBone* b : file.Skeleton->Bones)
                    if (b->Name == MayaName(channel.mNodeName.C_Str(), "") && b->Parent && node->mParent &&
                        b->Parent->Name == MayaName(node->mParent->mName.C_Str(), ""))
                        bone = b->Index;
                if (bone < 0)
                    continue;
                for (unsigned int k = 0; k < channel.mNumRotationKeys; ++k) {
                    const int key = keyAt(channel.mRotationKeys[k].mTime);
                    if (key < 0)
                        continue;
                    const float* q = animation.Rotations.Key(key) + 4 * bone;
                    aiQuaternion expected = channel.mRotationKeys[k].mValue;
                    expected.Normalize();
                    const float dot = q[0] * expected.x + q[1] * expected.y + q[2] * expected.z + q[3] * expected.w;
                    EXPECT_NEAR(std::abs(dot), 1.0f, 1e-4f) << channel.mNodeName.C_Str() << " key " << k;
                    ++compared;
                }
                for (unsigned int k = 0; k < channel.mNumPositionKeys; ++k) {
                    const int key = keyAt(channel.mPositionKeys[k].mTime);
                    if (key < 0)
                        continue;
                    const float* t = animation.Positions.Key(key) + 3 * bone;
                    const aiVector3D& expected = channel.mPositionKeys[k].mValue;
                    // Metres in the file, centimetres in the export, within a tenth of a millimetre: the pose
                    // passes through world matrices of bones metres from the origin.
                    EXPECT_NEAR(t[0], 100.0f * expected.x, 1e-2f);
                    EXPECT_NEAR(t[1], 100.0f * expected.y, 1e-2f);
                    EXPECT_NEAR(t[2], 100.0f * expected.z, 1e-2f);
                }
            }
        }
        EXPECT_GT(compared, 10);
    }
}

// CesiumMan sways along the engine's y as he walks; taking the motion on x and y out leaves his root where
// it starts and keeps the sway in the motion track.
TEST_F(ExportCommand, MotionExtractionLeavesAWalkingCharactersRootInPlace)
{
    const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "gltf/CesiumMan/CesiumMan.gltf";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    const auto rootTravel = [&](const std::string& entry, VAnimFileAnimation& walk) {
        ExportRequest request;
        request.Scene = scene.string();
        request.Target = Native("walk/man.model").string();
        request.Settings = {"ExportBones=TRUE"};
        request.Animations = {entry};
        EXPECT_EQ(Run(request, ImportFromFile), 0) << Err;
        VAnimationFile file;
        EXPECT_TRUE(ReadAnimationFile(FromNativePath(Native("walk/man.anim").string()), file)) << LastError().Text;
        walk = file.Animations.at(0);
        float travel = 0.0f;
        for (int k = 0; k < walk.Positions.KeyCount(); ++k)
            for (int axis : {0, 1})
                travel = std::max(travel, std::abs(walk.Positions.Key(k)[axis] - walk.Positions.Key(0)[axis]));
        return travel;
    };
    VAnimFileAnimation walk;
    EXPECT_GT(rootTravel("walk:0-48", walk), 0.5f);
    EXPECT_EQ(rootTravel("walk:0-48:motion=xy", walk), 0.0f);
    ASSERT_EQ(walk.Offsets.KeyCount(), 49);
    float sway = 0.0f;
    for (int k = 0; k < walk.Offsets.KeyCount(); ++k)
        sway = std::max(sway, std::abs(walk.Offsets.Key(k)[1]));
    EXPECT_GT(sway, 0.5f);
}

} // namespace
