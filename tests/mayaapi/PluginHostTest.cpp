#include <maya/MArgList.h>
#include <maya/MFileObject.h>
#include <maya/MFnPlugin.h>
#include <maya/MPxCommand.h>
#include <maya/MPxFileTranslator.h>
#include <standin/PluginHost.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace standin;

struct WriterCall {
  std::string fullName;
  std::string name;
  MPxFileTranslator::FileAccessMode mode = MPxFileTranslator::kUnknownAccessMode;
  MPxFileTranslator::FileAccessMode queriedMode = MPxFileTranslator::kUnknownAccessMode;
};

std::vector<WriterCall> g_writes;
std::vector<std::string> g_commandArgs;

class MeshTranslator : public MPxFileTranslator {
public:
  MStatus writer(const MFileObject& file, const MString&, FileAccessMode mode) override
  {
    g_writes.push_back(WriterCall{file.fullName().asChar(), file.name().asChar(), mode, fileAccessMode()});
    return MS::kSuccess;
  }
  bool haveWriteMethod() const override { return true; }
  MString defaultExtension() const override { return "QMESH"; }
  MFileKind identifyFile(const MFileObject& file, const char*, short) const override
  {
    const std::string name = file.name().toUpperCase().asChar();
    return name.size() > 6 && name.ends_with(".QMESH") ? kIsMyFileType : kNotMyFileType;
  }
  static void* Create() { return new MeshTranslator; }
};

class ProjectTranslator : public MPxFileTranslator {
public:
  static void* Create() { return new ProjectTranslator; }
};

class EchoCommand : public MPxCommand {
public:
  MStatus doIt(const MArgList& args) override
  {
    if (args.length() == 0)
      return MS::kInvalidParameter;
    for (unsigned int i = 0; i < args.length(); ++i)
      g_commandArgs.push_back(args.asString(i).asChar());
    return MS::kSuccess;
  }
  static void* Create() { return new EchoCommand; }
};

// Like the exporter's translators: the creator takes the format set just before the registration call.
std::string g_registering;
std::vector<std::string> g_formatsWritten;

class FormatTranslator : public MPxFileTranslator {
public:
  FormatTranslator() : m_format(g_registering) {}
  MStatus writer(const MFileObject&, const MString&, FileAccessMode) override
  {
    g_formatsWritten.push_back(m_format);
    return MS::kSuccess;
  }
  bool haveWriteMethod() const override { return true; }
  static void* Create() { return new FormatTranslator; }

private:
  std::string m_format;
};

MStatus InitializeFormats(MObject object)
{
  MFnPlugin plugin(object);
  for (const char* format : {"prefab", "qmesh", "model"}) {
    g_registering = format;
    plugin.registerFileTranslator(MString("Format_") + format, "none", FormatTranslator::Create);
  }
  g_registering.clear();
  return MS::kSuccess;
}

MStatus InitializePlugin(MObject object)
{
  MFnPlugin plugin(object, "Test Vendor", "1.0", "Any");
  plugin.registerFileTranslator("Test_Static_Mesh", "none", MeshTranslator::Create);
  plugin.registerFileTranslator("Test_Project", "none", ProjectTranslator::Create);
  plugin.registerCommand("TestEcho", EchoCommand::Create);
  return MS::kSuccess;
}

MStatus UninitializePlugin(MObject object)
{
  MFnPlugin plugin(object);
  plugin.deregisterFileTranslator("Test_Static_Mesh");
  plugin.deregisterFileTranslator("Test_Project");
  plugin.deregisterCommand("TestEcho");
  return MS::kSuccess;
}

// Registration in order, the export-all mode and unloading are seen through the exporter's own
// plug-in (tests/plugin/TranslatorTest.cpp, ExportTest.cpp).
class PluginHostTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    g_writes.clear();
    g_commandArgs.clear();
    ASSERT_TRUE(LoadPlugin("testPlugin", InitializePlugin, UninitializePlugin));
  }
  void TearDown() override { UnloadPlugin("testPlugin"); }
};

TEST_F(PluginHostTest, ExportSelectionCallsTheWriterWithTheFileAndTheActiveMode)
{
  ASSERT_TRUE(ExportFile("Test_Static_Mesh", "C:\\data\\rock.qmesh", MPxFileTranslator::kExportActiveAccessMode));
  ASSERT_EQ(g_writes.size(), 1u);
  EXPECT_EQ(g_writes[0].fullName, "C:/data/rock.qmesh");
  EXPECT_EQ(g_writes[0].name, "rock.qmesh");
  EXPECT_EQ(g_writes[0].mode, MPxFileTranslator::kExportActiveAccessMode);
  EXPECT_EQ(g_writes[0].queriedMode, MPxFileTranslator::kExportActiveAccessMode);
  EXPECT_EQ(MPxFileTranslator::fileAccessMode(), MPxFileTranslator::kUnknownAccessMode);
}

TEST_F(PluginHostTest, TranslatorWithoutWriterOrUnknownNameIsRefused)
{
  EXPECT_FALSE(ExportFile("Test_Project", "a.project", MPxFileTranslator::kExportAccessMode));
  EXPECT_EQ(ExportFile("Nobody", "a.x", MPxFileTranslator::kExportAccessMode), MS::kNotFound);
  EXPECT_FALSE(ImportFile("Test_Static_Mesh", "rock.qmesh"));
  EXPECT_TRUE(g_writes.empty());
}

TEST_F(PluginHostTest, IdentifyFilePicksTheTranslatorForAFile)
{
  EXPECT_EQ(TranslatorsFor("ROCK.qmesh"), (std::vector<std::string>{"Test_Static_Mesh"}));
  EXPECT_TRUE(TranslatorsFor("rock.qmesh.bak").empty());
}

TEST_F(PluginHostTest, CommandRunsDoItWithItsArguments)
{
  EXPECT_TRUE(RunCommand("TestEcho", {"-edit", "x"}));
  EXPECT_EQ(g_commandArgs, (std::vector<std::string>{"-edit", "x"}));
  EXPECT_EQ(RunCommand("TestEcho", {}), MS::kInvalidParameter);
  EXPECT_EQ(RunCommand("Missing", {}), MS::kNotFound);
}

TEST_F(PluginHostTest, TranslatorsAreMadeWhenRegisteredSoEachKeepsItsFormat)
{
  g_formatsWritten.clear();
  ASSERT_TRUE(LoadPlugin("formats", InitializeFormats, nullptr));
  ASSERT_TRUE(ExportFile("Format_qmesh", "a.qmesh", MPxFileTranslator::kExportAccessMode));
  ASSERT_TRUE(ExportFile("Format_prefab", "a.prefab", MPxFileTranslator::kExportAccessMode));
  ASSERT_TRUE(ExportFile("Format_model", "a.model", MPxFileTranslator::kExportAccessMode));
  EXPECT_EQ(g_formatsWritten, (std::vector<std::string>{"qmesh", "prefab", "model"}));
  ASSERT_TRUE(UnloadPlugin("formats"));
  EXPECT_EQ(RegisteredTranslators().size(), 2u);
}

TEST_F(PluginHostTest, SecondRegistrationOfANameFails)
{
  EXPECT_FALSE(LoadPlugin("testPlugin", InitializePlugin, UninitializePlugin));
  MObject notAPlugin;
  MStatus status;
  MFnPlugin plugin(notAPlugin, "v", "1", "Any", &status);
  EXPECT_FALSE(status);
  EXPECT_FALSE(plugin.registerCommand("Other", EchoCommand::Create));
}

}
