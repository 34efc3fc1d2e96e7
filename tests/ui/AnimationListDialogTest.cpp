#include "ui/AnimationListDialog.h"

#include "settings/VAnimationTable.h"
#include "ui/AnimationEntryDialog.h"

#include "DialogScript.h"

#include <gmock/gmock.h>

namespace lc = ListControl;
namespace ec = EntryControl;

namespace {

class AnimationListTest : public ::testing::Test {
protected:
    AnimationListDialog& Open()
    {
        m_dialog = std::make_unique<AnimationListDialog>(Animations, Boxes, &View, false);
        m_dialog->Open();
        return *m_dialog;
    }
    void AddNamed(const std::string& name)
    {
        VAnimationDescription entry;
        entry.Name = name;
        Animations.Add(entry);
    }
    // The texts of the number buttons shown.
    std::vector<std::string> Numbers() const
    {
        std::vector<std::string> numbers;
        for (int row = 0; row < kVisibleAnimationRows; ++row) {
            if ((*m_dialog)[lc::FirstNumber + row].Visible)
                numbers.push_back(m_dialog->Text(lc::FirstNumber + row));
        }
        return numbers;
    }
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const VAnimationDescription& entry : Animations)
            names.push_back(entry.Name);
        return names;
    }

    VAnimationTable Animations;
    ScriptedMessageBox Boxes;
    ScriptedView View;

private:
    std::unique_ptr<AnimationListDialog> m_dialog;
};

void ConfirmAs(Dialog& entry, const std::string& name)
{
    Type(entry, ec::Name, name);
    entry.Command(kIdOk);
}

} // namespace

TEST_F(AnimationListTest, FirstEntryIsTheReferenceLaterOnesTakeTheSourceOfTheOneBeforeAndDeletingKeepsTheOrder)
{
    AnimationListDialog& list = Open();
    View.Scripts.push_back([](Dialog& entry) {
        EXPECT_EQ(entry.Layout().Caption, "Enter animation data");
        EXPECT_EQ(entry.Text(ec::Name), "Reference");
        entry.Command(kIdOk);
    });
    list.Command(lc::Add);
    ASSERT_EQ(Animations.Count(), 1);
    EXPECT_EQ(Animations[0].SourceFile, "[This file]");

    Animations[0].SourceFile = "walk.ma";
    View.Scripts.push_back([](Dialog& entry) {
        EXPECT_EQ(entry.Text(ec::Name), "Anim");
        ConfirmAs(entry, "Walk");
    });
    list.Command(lc::Add);
    View.Scripts.push_back([](Dialog& entry) { entry.Command(kIdCancel); });
    list.Command(lc::Add);

    EXPECT_THAT(Names(), ::testing::ElementsAre("Reference", "Walk"));
    EXPECT_EQ(Animations[1].SourceFile, "walk.ma");
    EXPECT_THAT(Numbers(), ::testing::ElementsAre("1", "2"));
    EXPECT_FALSE(list[lc::ScrollBar].Enabled);

    // Deleting the middle entry keeps the others in order.
    View.Scripts.push_back([](Dialog& entry) { ConfirmAs(entry, "Run"); });
    list.Command(lc::Add);
    View.Scripts.push_back([](Dialog& entry) {
        EXPECT_EQ(entry.Layout().Caption, "Edit animation name and type");
        EXPECT_EQ(entry.Text(ec::Name), "Walk");
        entry.Command(ec::Delete);
    });
    list.Command(lc::FirstNumber + 1);
    EXPECT_THAT(Names(), ::testing::ElementsAre("Reference", "Run"));
    EXPECT_THAT(Numbers(), ::testing::ElementsAre("1", "2"));
}

TEST_F(AnimationListTest, TwentyEntriesScrollOverThreeRows)
{
    for (int i = 1; i <= 20; ++i)
        AddNamed("Anim" + std::to_string(i));
    AnimationListDialog& list = Open();
    EXPECT_TRUE(list[lc::ScrollBar].Enabled);
    EXPECT_EQ(list[lc::ScrollBar].Minimum, 0);
    EXPECT_EQ(list[lc::ScrollBar].Maximum, 3);

    list[lc::ScrollBar].Position = 3;
    list.Command(lc::ScrollBar);
    const std::vector<std::string> numbers = Numbers();
    ASSERT_EQ(numbers.size(), 17u);
    EXPECT_EQ(numbers.front(), "4");
    EXPECT_EQ(numbers.back(), "20");
    EXPECT_EQ(list[lc::Rows].Rows.front().front().Text, "Anim4");

    // A number button edits the entry it shows, not the one of its row at the top.
    View.Scripts.push_back([](Dialog& entry) { ConfirmAs(entry, "Last"); });
    list.Command(lc::FirstNumber + 16);
    EXPECT_EQ(Animations[19].Name, "Last");
}

TEST_F(AnimationListTest, RowsShowTypeRangeFramesAndFileInTheirColours)
{
    VAnimationDescription walk;
    walk.Name = "Walk";
    walk.Type = kAnimTypeBone;
    walk.UseRange = 1;
    walk.RangeStart = 10;
    walk.RangeEnd = 40;
    walk.Frames = 7;
    Animations.Add(walk);
    VAnimationDescription smile;
    smile.Name = "Smile";
    smile.Type = kAnimTypeMorphTarget;
    smile.UseRange = 1;
    smile.RangeStart = 12;
    Animations.Add(smile);

    const std::vector<std::vector<Cell>>& rows = Open()[lc::Rows].Rows;
    EXPECT_THAT(rows[0], ::testing::ElementsAre(Cell {"Walk", {240, 240, 50}, 0}, Cell {"Bone", {255, 80, 40}, 260},
                                                Cell {"10->40", {240, 200, 160}, 316},
                                                Cell {"  7", {208, 255, 40}, 376},
                                                Cell {"[This file]", {255, 192, 60}, 432}));
    EXPECT_THAT(rows[1], ::testing::ElementsAre(Cell {"Smile", {240, 240, 50}, 0}, Cell {"Target", {80, 224, 224}, 260},
                                                Cell {"12", {240, 200, 160}, 326},
                                                Cell {"[This file]", {255, 192, 60}, 432}));
}

TEST_F(AnimationListTest, FullTableRefusesAnotherEntry)
{
    for (int i = 0; i < VAnimationTable::kCapacity; ++i)
        AddNamed("A" + std::to_string(i));
    Open().Command(lc::Add);
    EXPECT_TRUE(View.Shown.empty());
    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(Boxes.Requests[0].Caption, "Overflow");
    EXPECT_EQ(Boxes.Requests[0].Text, "Too many Animations");
    EXPECT_EQ(Animations.Count(), VAnimationTable::kCapacity);
}

class AnimationEntryTest : public ::testing::Test {
protected:
    AnimationEntryDialog& Open(AnimationEntryDialog::Purpose purpose = AnimationEntryDialog::Purpose::Edit)
    {
        m_dialog = std::make_unique<AnimationEntryDialog>(purpose, Entry, Boxes, nullptr, false);
        m_dialog->Open();
        return *m_dialog;
    }

    VAnimationDescription Entry;
    ScriptedMessageBox Boxes;

private:
    std::unique_ptr<AnimationEntryDialog> m_dialog;
};

TEST_F(AnimationEntryTest, MorphTargetIsOneFrameWhicheverRangeFieldIsTyped)
{
    Entry.UseRange = 1;
    Entry.RangeStart = 5;
    Entry.RangeEnd = 30;
    Entry.Looped = 1;
    AnimationEntryDialog& dialog = Open();
    Click(dialog, ec::MorphTarget);
    EXPECT_EQ(dialog.Text(ec::RangeEnd), "5");
    for (int id : {ec::Looped, ec::Smooth, ec::PredefinedFrames, ec::MotionDelta, ec::MoveX, ec::Compensate,
                   ec::Compress})
        EXPECT_FALSE(dialog[id].Enabled) << id;

    Type(dialog, ec::RangeEnd, "12");
    EXPECT_EQ(dialog.Text(ec::RangeStart), "12");
    Type(dialog, ec::RangeStart, "14");
    EXPECT_EQ(dialog.Text(ec::RangeEnd), "14");

    dialog.Command(kIdOk);
    EXPECT_EQ(dialog.Result(), kEntryConfirmed);
    EXPECT_EQ(Entry.Type, kAnimTypeMorphTarget);
    EXPECT_EQ(Entry.Frames, 1);
    EXPECT_EQ(Entry.RangeStart, 14);
    EXPECT_EQ(Entry.RangeEnd, 14);
    EXPECT_EQ(Entry.Looped, 0);
}

TEST_F(AnimationEntryTest, BoneAnimationStoresSamplingAndMotionExtraction)
{
    AnimationEntryDialog& dialog = Open(AnimationEntryDialog::Purpose::Add);
    Click(dialog, ec::Bone);
    EXPECT_TRUE(dialog[ec::Compress].Enabled);
    Click(dialog, ec::PredefinedFrames);
    Click(dialog, ec::Smooth);
    EXPECT_TRUE(dialog[ec::SmoothFrames].Enabled);
    Type(dialog, ec::SmoothFrames, "24");
    EXPECT_FALSE(dialog[ec::MoveY].Enabled);
    Click(dialog, ec::MotionDelta);
    Click(dialog, ec::MoveY);
    Click(dialog, ec::RotationZ);
    Click(dialog, ec::Compensate);
    Click(dialog, ec::Looped);
    Click(dialog, ec::Muscle);
    EXPECT_FALSE(dialog[ec::Compress].Enabled);
    Click(dialog, ec::Bone);

    dialog.Command(kIdOk);
    EXPECT_EQ(dialog.Result(), kEntryConfirmed);
    EXPECT_EQ(Entry.Type, kAnimTypeBone);
    EXPECT_EQ(Entry.UseMaxFrames, 0);
    EXPECT_EQ(Entry.Frames, 24);
    EXPECT_EQ(Entry.MotionDelta, 1);
    EXPECT_EQ(Entry.MoveY, 1);
    EXPECT_EQ(Entry.RotationAxis, 3);
    EXPECT_EQ(Entry.CompensateRotation, 1);
    EXPECT_EQ(Entry.CompensateOffset, 1);
    EXPECT_EQ(Entry.Looped, 1);
    EXPECT_TRUE(Entry.Compressed);
}

struct EntryRefusal {
    const char* Name;
    int Field;
    const char* Typed;
    const char* Message;
};

class AnimationEntryRefusal : public AnimationEntryTest, public ::testing::WithParamInterface<EntryRefusal> {};

TEST_P(AnimationEntryRefusal, KeepsTheDialogOpenAndTheEntryUnchanged)
{
    Entry.UseRange = 1;
    Entry.RangeEnd = 10;
    Entry.UseMaxFrames = 0;
    Entry.Frames = 5;
    const VAnimationDescription before = Entry;
    AnimationEntryDialog& dialog = Open();
    Type(dialog, GetParam().Field, GetParam().Typed);

    dialog.Command(kIdOk);
    EXPECT_FALSE(dialog.Ended());
    EXPECT_EQ(dialog.Focus(), GetParam().Field);
    EXPECT_EQ(Entry, before);
    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(Boxes.Requests[0].Caption, "Error");
    EXPECT_EQ(Boxes.Requests[0].Text, GetParam().Message);
}

INSTANTIATE_TEST_SUITE_P(Fields, AnimationEntryRefusal, ::testing::Values(
    EntryRefusal {"EmptyName", ec::Name, "  ", "Please enter a valid animation name"},
    EntryRefusal {"NoSmoothing", ec::SmoothFrames, "0", "Please smooth the animation with 1 frame or more"},
    EntryRefusal {"NegativeStart", ec::RangeStart, "-1", "The range must start at frame 0 or later"},
    EntryRefusal {"EndBeforeStart", ec::RangeEnd, "-2", "The range must not end before it starts"}),
    [](const auto& test) { return test.param.Name; });
