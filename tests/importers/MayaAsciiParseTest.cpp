#include "importers/mayaascii/ParseMayaAscii.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace {

MaRecord Parse(const std::string& text, ImportResult& result)
{
    MaRecord record;
    EXPECT_TRUE(ParseMayaAscii(text, record, result)) << result.Error;
    return record;
}

template <typename T>
const T& Command(const MaRecord& record, size_t index)
{
    EXPECT_LT(index, record.Commands.size());
    return std::get<T>(record.Commands.at(index).Data);
}

TEST(MayaAsciiParse, ReadsEachCommandWithTheFlagsMayaWrites)
{
    ImportResult result;
    const MaRecord record = Parse(R"(//Maya ASCII 2018 scene
requires -nodeType "aiOptions" -nodeType "aiAOVDriver" "mtoa" "2.1.0.1";
currentUnit -l meter -a radian -t ntsc;
file -rdi 1 -ns "prop" -rfn "propRN" "props/prop.ma";
file -r -ns "prop" -dr 1 -rfn "propRN" "props/other.ma";
file -r -ns "prop" -rfn "propRN" -typ "mayaAscii" "props/prop.ma";
createNode transform -s -n "persp";
	rename -uid "4C1498E3-5B4D-F7AC-908A-288468EC3756";
createNode mesh -n "pCubeShape1" -p "|group1|pCube1";
	setAttr -k off ".v";
	setAttr -s 2 ".vt[0:1]"  -0.5 1e+20 0.5 yes no
		 -1;
	addAttr -ci true -h true -sn "ea" -ln "ExportAs" -min 0 -max 2 -en "mesh:bounds=1:portal" -at "enum";
select -ne :time1;
parent -s -nc -r -add "|pCube1|pCubeShape1" "pCube2" ;
connectAttr "pCubeShape1.iog" ":initialShadingGroup.dsm" -na;
rename "pCube2" "pCube3";
// End of scene.ma
)",
                                   result);
    ASSERT_EQ(record.Commands.size(), 12u);
    EXPECT_EQ(Command<MaRequires>(record, 0).Plugin, "mtoa");
    EXPECT_EQ(Command<MaRequires>(record, 0).NodeTypes, (std::vector<std::string>{"aiOptions", "aiAOVDriver"}));
    EXPECT_EQ(Command<MaCurrentUnit>(record, 1).Linear, "meter");
    EXPECT_EQ(Command<MaCurrentUnit>(record, 1).Angle, "radian");
    EXPECT_EQ(Command<MaCurrentUnit>(record, 1).Time, "ntsc");
    // "file -rdi" records depth only, and a deferred reference is not loaded.
    EXPECT_EQ(Command<MaFileReference>(record, 2).Path, "props/prop.ma");
    EXPECT_EQ(Command<MaFileReference>(record, 2).Namespace, "prop");
    EXPECT_TRUE(Command<MaCreateNode>(record, 3).Shared);
    EXPECT_EQ(Command<MaCreateNode>(record, 3).Name, "persp");
    EXPECT_EQ(Command<MaCreateNode>(record, 4).Parent, "|group1|pCube1");
    EXPECT_TRUE(Command<MaSetAttr>(record, 5).Numbers.empty());
    const MaSetAttr& points = Command<MaSetAttr>(record, 6);
    EXPECT_EQ(points.Plug, ".vt[0:1]");
    EXPECT_EQ(points.Size, 2);
    EXPECT_EQ(points.Numbers, (std::vector<double>{-0.5, 1e20, 0.5, 1.0, 0.0, -1.0}));
    const MaAddAttr& added = Command<MaAddAttr>(record, 7);
    EXPECT_EQ(added.LongName, "ExportAs");
    EXPECT_EQ(added.ShortName, "ea");
    EXPECT_EQ(added.AttributeType, "enum");
    EXPECT_EQ(added.EnumNames, "mesh:bounds=1:portal");
    EXPECT_TRUE(added.Hidden);
    EXPECT_EQ(Command<MaSelect>(record, 8).Name, ":time1");
    EXPECT_TRUE(Command<MaParent>(record, 9).AddInstance);
    EXPECT_EQ(Command<MaParent>(record, 9).Children, (std::vector<std::string>{"|pCube1|pCubeShape1"}));
    EXPECT_EQ(Command<MaParent>(record, 9).Parent, "pCube2");
    EXPECT_TRUE(Command<MaConnectAttr>(record, 10).NextAvailable);
    EXPECT_EQ(Command<MaConnectAttr>(record, 10).Destination, ":initialShadingGroup.dsm");
    EXPECT_EQ(Command<MaRename>(record, 11).From, "pCube2");
    EXPECT_EQ(Command<MaRename>(record, 11).To, "pCube3");
    ASSERT_EQ(result.Warnings.size(), 1u);
    EXPECT_EQ(result.Warnings[0].Describe(),
              "line 5: file: the reference to 'props/other.ma' was saved unloaded; it is not read");
}

TEST(MayaAsciiParse, TypedValuesKeepTheirNumbersAndStrings)
{
    ImportResult result;
    const MaRecord record = Parse(R"(
setAttr ".b" -type "string" ("playbackOptions -min 1 \"x\"\n"
	+ "-max 24;");
setAttr ".xm[0]" -type "matrix" "xform" 1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0
	 0 0 0 0 0 0 0 0 0 0 1 0 0 0 1 1 1 1 yes;
setAttr ".aal" -type "attributeAlias" {"target3","weight[0]","target2","weight[1]"} ;
setAttr ".ic" -type "componentList" 2 "f[0:3]" "f[5]";
setAttr ".fc[0:1]" -type "polyFaces" f 4 0 1 2 3 mu 0 4 0 1 2 3 mc 1 4 3 2 1 0 h 3 -5 -6 -7
	f 3 0 4 -2;
setAttr ".fc[2]"
	f 3 1 2 3;
setAttr ".cim" -type "Int32Array" 2 7 -1 ;
setAttr ".dd" -type "doubleArray" 2 -1 0.5 ;
setAttr ".otfna" -type "stringArray" 2 "NURBS Curves" "Polygons"  ;
setAttr ".vl" -type "vectorArray" 1 0 1 0 ;
// End of scene.ma
)",
                                  result);
    ASSERT_EQ(record.Commands.size(), 10u);
    EXPECT_EQ(Command<MaSetAttr>(record, 0).Strings, (std::vector<std::string>{"playbackOptions -min 1 \"x\"\n-max 24;"}));
    const MaSetAttr& xform = Command<MaSetAttr>(record, 1);
    EXPECT_TRUE(xform.Xform);
    EXPECT_EQ(xform.Numbers.size(), 37u);
    EXPECT_EQ(Command<MaSetAttr>(record, 2).Strings,
              (std::vector<std::string>{"target3", "weight[0]", "target2", "weight[1]"}));
    EXPECT_EQ(Command<MaSetAttr>(record, 3).Numbers, (std::vector<double>{2}));
    EXPECT_EQ(Command<MaSetAttr>(record, 3).Strings, (std::vector<std::string>{"f[0:3]", "f[5]"}));

    const MaPolyFaces& faces = *Command<MaSetAttr>(record, 4).Faces;
    EXPECT_EQ(faces.FaceCount, 2);
    ASSERT_EQ(faces.Loops.size(), 3u);
    EXPECT_FALSE(faces.Loops[0].Hole);
    EXPECT_TRUE(faces.Loops[1].Hole);
    EXPECT_EQ(faces.Loops[1].Face, 0);
    EXPECT_EQ(faces.Loops[2].Face, 1);
    EXPECT_EQ(faces.Edges, (std::vector<int>{0, 1, 2, 3, -5, -6, -7, 0, 4, -2}));
    ASSERT_EQ(faces.UVs.size(), 1u);
    ASSERT_EQ(faces.Colors.size(), 1u);
    EXPECT_EQ(faces.Colors[0].Set, 1);
    EXPECT_EQ(faces.Ids, (std::vector<int>{0, 1, 2, 3, 3, 2, 1, 0}));
    // The later parts of a long face list do not repeat the data type.
    EXPECT_EQ(Command<MaSetAttr>(record, 5).Faces->Edges, (std::vector<int>{1, 2, 3}));
    // Arrays keep their counts in front, as the file writes them.
    EXPECT_EQ(Command<MaSetAttr>(record, 6).Numbers, (std::vector<double>{2, 7, -1}));
    EXPECT_EQ(Command<MaSetAttr>(record, 7).Numbers, (std::vector<double>{2, -1, 0.5}));
    EXPECT_EQ(Command<MaSetAttr>(record, 8).Strings, (std::vector<std::string>{"NURBS Curves", "Polygons"}));
    EXPECT_EQ(Command<MaSetAttr>(record, 9).Type, "vectorArray");
    EXPECT_EQ(Command<MaSetAttr>(record, 9).Numbers, (std::vector<double>{1, 0, 1, 0}));
    EXPECT_TRUE(result.Warnings.empty());
}

struct Malformed {
    const char* Text;
    const char* Message; // the error, or the one warning when the text is read
    bool Fatal;
};

class MayaAsciiMalformed : public ::testing::TestWithParam<Malformed> {};

TEST_P(MayaAsciiMalformed, IsReportedWithItsLine)
{
    MaRecord record;
    ImportResult result;
    const bool read = ParseMayaAscii(GetParam().Text, record, result);
    EXPECT_EQ(read, !GetParam().Fatal);
    if (GetParam().Fatal) {
        EXPECT_EQ(result.Error, GetParam().Message);
        return;
    }
    ASSERT_EQ(result.Warnings.size(), 1u) << result.Warnings[1].Describe();
    EXPECT_EQ(result.Warnings[0].Describe(), GetParam().Message);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MayaAsciiMalformed,
    ::testing::Values(
        Malformed{"createNode transform -n \"a\";\nsetAttr \".t\" -type \"double3\"\n 1 2",
                  "line 2: the file ends inside a setAttr command; it is truncated", true},
        Malformed{"createNode transform -n \"a\";\n\nsetAttr \".ftn\" -type \"string\" \"C:/tex\n", 
                  "line 3: the file ends inside a string; it is truncated", true},
        Malformed{"setAttr \".t\" 1 abc 3;\n// End of a.ma", "line 1: setAttr: 'abc' is not a number; the command is passed over",
                  false},
        Malformed{"\ncreateNode transform -q -n \"a\";\n// End of a.ma",
                  "line 2: createNode: unknown flag -q; the command is passed over", false},
        Malformed{"setAttr \".fc[0]\" -type \"polyFaces\" f 4 0 1 2;\n// End of a.ma",
                  "line 1: setAttr: a polyFaces value has fewer edges than it announces; the command is passed over",
                  false},
        Malformed{"setAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2 mu 0 4 0 1 2 3;\n// End of a.ma",
                  "line 1: setAttr: a polyFaces value has a malformed 'mu' entry; the command is passed over", false},
        Malformed{"sets -e -fe \"a\";\nsets -e \"b\";\n// End of a.ma",
                  "line 1: the command 'sets' is not read; it is passed over (2 times in all)", false},
        Malformed{"createNode transform -n \"a\";\n", "line 2: the file has no closing '// End of' line; it may be truncated",
                  false}));

} // namespace
