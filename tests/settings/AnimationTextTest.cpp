#include "settings/AnimationText.h"

#include "DebugCapture.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

VAnimationTable Load(std::string_view text)
{
    VAnimationTable animations;
    LoadAnimationsFromString(text, animations);
    return animations;
}

VAnimationDescription Walk()
{
    VAnimationDescription walk;
    walk.Name = "walk fast=1";
    walk.SourceFile = "C:\\anims\\walk.ma";
    walk.Type = kAnimTypeBone;
    walk.Looped = 1;
    walk.UseRange = 1;
    walk.RangeStart = 12;
    walk.RangeEnd = 48;
    walk.UseMaxFrames = 0;
    walk.EstimateFrames = 5;
    walk.EstimateLevel = 6;
    walk.Frames = 7;
    walk.MotionDelta = 1;
    walk.CompensateRotation = 1;
    walk.CompensateOffset = 0;
    walk.MoveX = 1;
    walk.MoveY = 0;
    walk.MoveZ = 1;
    walk.RotationAxis = 2;
    walk.Compressed = false;
    return walk;
}

} // namespace

TEST(AnimationTextSave, WritesTheCountAndTwentyOneKeyLinesPerEntry)
{
    VAnimationTable animations;
    animations.Add(Walk());
    const std::string expected = "// NumAnimations: 1\r\n"
                                 "// Animation: walk%20fast%3D1\r\n"
                                 "// AnimFile: C:\\anims\\walk.ma\r\n"
                                 "// AnimType: 3\r\n"
                                 "// AnimLooped: 1\r\n"
                                 "// AnimUseRange: 1\r\n"
                                 "// AnimRangeStart: 12\r\n"
                                 "// AnimRangeEnd: 48\r\n"
                                 "// UseMaxFrames: 0\r\n"
                                 "// EstimateFrames: 5\r\n"
                                 "// EstimateLevel: 6\r\n"
                                 "// AnimFrames: 7\r\n"
                                 "// AnimMotionDelta: 1\r\n"
                                 "// AnimCompRot: 1\r\n"
                                 "// AnimCompOfs: 0\r\n"
                                 "// AnimMovX: 1\r\n"
                                 "// AnimMovY: 0\r\n"
                                 "// AnimMovZ: 1\r\n"
                                 "// AnimRotX: 0\r\n"
                                 "// AnimRotY: 1\r\n"
                                 "// AnimRotZ: 0\r\n"
                                 "// AnimCompressed: 0\r\n";
    EXPECT_EQ(SaveAnimationsToString(animations), expected);
}

TEST(AnimationTextSave, EmptyTableWritesOnlyTheCount)
{
    EXPECT_EQ(SaveAnimationsToString(VAnimationTable {}), "// NumAnimations: 0\r\n");
}

TEST(AnimationTextSave, DefaultEntryEscapesItsSourceFile)
{
    VAnimationTable animations;
    animations.Add(VAnimationDescription {});
    const std::string text = SaveAnimationsToString(animations);
    EXPECT_NE(text.find("// Animation: Noname\r\n// AnimFile: [This%20file]\r\n"), std::string::npos);
}

TEST(AnimationTextSave, RotationAxisSetsExactlyOneOfTheThreeAxisLines)
{
    for (int axis = 0; axis <= 3; ++axis) {
        VAnimationTable animations;
        VAnimationDescription entry;
        entry.RotationAxis = axis;
        animations.Add(entry);
        const std::string text = SaveAnimationsToString(animations);
        EXPECT_NE(text.find(axis == 1 ? "// AnimRotX: 1\r\n" : "// AnimRotX: 0\r\n"), std::string::npos) << axis;
        EXPECT_NE(text.find(axis == 2 ? "// AnimRotY: 1\r\n" : "// AnimRotY: 0\r\n"), std::string::npos) << axis;
        EXPECT_NE(text.find(axis == 3 ? "// AnimRotZ: 1\r\n" : "// AnimRotZ: 0\r\n"), std::string::npos) << axis;
    }
}

TEST(AnimationTextSave, EscapedNamesAreCutTo255Characters)
{
    VAnimationTable animations;
    VAnimationDescription entry;
    entry.Name = std::string(300, 'n');
    entry.SourceFile = std::string(100, ' ');
    animations.Add(entry);
    const std::string text = SaveAnimationsToString(animations);
    EXPECT_NE(text.find("// Animation: " + std::string(255, 'n') + "\r\n"), std::string::npos);
    std::string cutFile;
    for (int i = 0; i < 85; ++i)
        cutFile += "%20";
    EXPECT_NE(text.find("// AnimFile: " + cutFile + "\r\n"), std::string::npos);
}

TEST(AnimationTextSave, TracesItsStartAndEnd)
{
    DebugCapture debug;
    SaveAnimationsToString(VAnimationTable {});
    EXPECT_EQ(debug.Text(), "SaveAnimationsToString()\r\nEnd of SaveAnimationsToString()\r\n");
}

TEST(AnimationTextLoad, SavedTableLoadsBackUnchanged)
{
    VAnimationTable animations;
    animations.Add(Walk());
    VAnimationDescription morph;
    morph.Name = "smile";
    morph.Type = kAnimTypeMorphTarget;
    morph.RotationAxis = 1;
    animations.Add(morph);
    animations.Add(VAnimationDescription {});
    EXPECT_EQ(Load(SaveAnimationsToString(animations)), animations);
}

TEST(AnimationTextLoad, EntriesNotNamedByAnAnimationKeyKeepTheNewEntryDefaults)
{
    const VAnimationTable animations = Load("// NumAnimations: 2\r\n// Animation: first\r\n");
    ASSERT_EQ(animations.Count(), 2);
    EXPECT_EQ(animations[1], VAnimationDescription {});
}

// A one-entry text and what it changes in the entry its "Animation:" key starts; that key resets
// the fields older blocks did not write.
struct EntryCase {
    std::string Text;
    std::function<void(VAnimationDescription&)> Change = [](VAnimationDescription&) {};
};

class AnimationTextEntries : public ::testing::TestWithParam<EntryCase> {};

TEST_P(AnimationTextEntries, ChangeExactlyTheirFields)
{
    VAnimationDescription expected;
    expected.Name = "a";
    expected.CompensateRotation = expected.CompensateOffset = 0;
    expected.MoveX = expected.MoveY = expected.MoveZ = 1;
    expected.RotationAxis = 0;
    expected.EstimateFrames = 0;
    expected.EstimateLevel = 2;
    expected.Compressed = false;
    GetParam().Change(expected);
    const VAnimationTable animations = Load(GetParam().Text);
    ASSERT_EQ(animations.Count(), 1);
    EXPECT_EQ(animations[0], expected);
}

INSTANTIATE_TEST_SUITE_P(AnimationTextLoad, AnimationTextEntries, ::testing::Values(
    EntryCase {"NumAnimations: 1 Animation: a"},
    EntryCase {"// NumAnimations: 1\r\n// Animation: walk%20fast%3D1\r\n",
               [](VAnimationDescription& e) { e.Name = "walk fast=1"; }},
    EntryCase {"numanimations: 1 ANIMATION: a animtype: 5 ANIMRANGEEND: 9",
               [](VAnimationDescription& e) { e.Type = kAnimTypeMorphTarget; e.RangeEnd = 9; }},
    // The rotation axis comes from the line whose value starts with "1".
    EntryCase {"NumAnimations: 1 Animation: a AnimRotX: 0 AnimRotY: 0 AnimRotZ: 1",
               [](VAnimationDescription& e) { e.RotationAxis = 3; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimRotX: 1 AnimRotY: 0 AnimRotZ: 0",
               [](VAnimationDescription& e) { e.RotationAxis = 1; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimRotY: 12", [](VAnimationDescription& e) { e.RotationAxis = 2; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimRotY: 01"},
    // Keys of older blocks: a static offset moves on every axis, an excluded axis does not move.
    EntryCase {"NumAnimations: 1 Animation: a AnimMovX: 0 AnimMovY: 0 AnimMovZ: 0 AnimStaticOffset: 1",
               [](VAnimationDescription& e) { e.MotionDelta = 1; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimExcludeX: 1 AnimExcludeY: 0 AnimExcludeZ: 2",
               [](VAnimationDescription& e) { e.MoveX = e.MoveZ = 0; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimCompressed: 7", [](VAnimationDescription& e) { e.Compressed = true; }},
    // Unknown keys are skipped with their values; a value that does not parse changes nothing.
    EntryCase {"NumAnimations: 1 Animation: a Colour: AnimType: AnimType: 3",
               [](VAnimationDescription& e) { e.Type = kAnimTypeBone; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimRangeEnd: 9 AnimRangeEnd: end",
               [](VAnimationDescription& e) { e.RangeEnd = 9; }},
    // Keys before the first entry and entries beyond the count have nowhere to go.
    EntryCase {"NumAnimations: 1 AnimType: 3 AnimFile: x.ma Animation: a"},
    EntryCase {"NumAnimations: 1 Animation: a AnimType: 3 Animation: b AnimType: 5 Animation: c",
               [](VAnimationDescription& e) { e.Type = kAnimTypeBone; }},
    // A name holding the options marker, an overlong value and a key without value are refused.
    EntryCase {"NumAnimations: 1 Animation: <OPTIONS>", [](VAnimationDescription& e) { e.Name = "Noname"; }},
    EntryCase {"NumAnimations: 1 Animation: a AnimFile: " + std::string(1024, 'x')},
    EntryCase {"NumAnimations: 1 Animation: a AnimType:"}));

TEST(AnimationTextLoad, CountAboveTheTableCapacityKeepsTheFirstEntries)
{
    DebugCapture debug;
    const VAnimationTable animations = Load("NumAnimations: 5000 Animation: first");
    ASSERT_EQ(animations.Count(), VAnimationTable::kCapacity);
    EXPECT_EQ(animations[0].Name, "first");
    EXPECT_EQ(debug.Text(), "LoadAnimationsFromString()\r\nOnly the first 1024 of 5000 animations are loaded\r\n");
}

TEST(AnimationTextLoad, NegativeCountEmptiesTheTable)
{
    VAnimationTable animations;
    animations.Add(VAnimationDescription {});
    LoadAnimationsFromString("NumAnimations: -3 Animation: a", animations);
    EXPECT_EQ(animations.Count(), 0);
}

TEST(AnimationTextLoad, CountThatDoesNotParseKeepsTheTable)
{
    VAnimationTable animations;
    animations.Add(VAnimationDescription {});
    LoadAnimationsFromString("NumAnimations: many", animations);
    EXPECT_EQ(animations.Count(), 1);
}

TEST(AnimationTextLoad, NameHoldingTheOptionsMarkerIsRefused)
{
    EXPECT_EQ(Load("NumAnimations: 1 Animation: <OPTIONS>")[0].Name, "Noname");
}

TEST(AnimationTextLoad, OverlongValueIsIgnored)
{
    const std::string longName(1024, 'x');
    EXPECT_EQ(Load("NumAnimations: 1 Animation: a AnimFile: " + longName)[0].SourceFile, "[This file]");
}

TEST(AnimationTextLoad, KeyWithoutValueAtTheEndIsIgnored)
{
    EXPECT_EQ(Load("NumAnimations: 1 Animation: a AnimType:")[0].Type, kAnimTypeMuscle);
}

TEST(AnimationTextLoad, EmptyTextIsReportedAndChangesNothing)
{
    DebugCapture debug;
    VAnimationTable animations;
    animations.Add(VAnimationDescription {});
    LoadAnimationsFromString("", animations);
    EXPECT_EQ(animations.Count(), 1);
    EXPECT_EQ(debug.Text(), "LoadAnimationsFromString()\r\nAnimation options string was NULL\r\n");
}
