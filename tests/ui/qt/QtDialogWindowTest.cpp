// The options dialogs drawn by Qt on the offscreen platform, worked with QTest as a person would.

#include "ui/qt/QtDialogWindow.h"

#include "settings/ApplicationSettings.h"
#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"
#include "ui/ExportOptionsDialog.h"

#include "../DialogScript.h"
#include "../TempSettings.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace oc = OptionsControl;

namespace {

// One application for the whole run, gone before the process exits as Qt requires.
class QtApplication final : public ::testing::Environment {
public:
    void SetUp() override
    {
        // Never a real display: the tests must run the same on a desktop and on CI.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_application = std::make_unique<QApplication>(m_argc, m_argv);
    }
    void TearDown() override { m_application.reset(); }

private:
    int m_argc = 1;
    char m_name[12] = "ui_qt_tests";
    char* m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

[[maybe_unused]] const ::testing::Environment* const g_application =
    ::testing::AddGlobalTestEnvironment(new QtApplication);

class OptionsWindow : public ::testing::TestWithParam<int> {
protected:
    OptionsWindow()
    {
        Context.FormatKind = GetParam();
        Context.StaticGeometryControls = GetParam() != kFormatKindModel;
        Context.TargetFile = "\\work\\level\\level.qmesh";
        Context.TargetDirectory = "\\work\\level\\";
        SetExportOptionDefaults(Options, ExportOptionDefaults {.FormatKind = GetParam()});
        Dialog = std::make_unique<ExportOptionsDialog>(Context, &Options, Animations,
                                                       OptionsDialogServices {Boxes, &View, Settings, m_temp.Store});
        Dialog->Open();
        Window = std::make_unique<QtDialogWindow>(*Dialog, nullptr);
        Window->show();
    }

    QAbstractButton& Button(int id) const { return *qobject_cast<QAbstractButton*>(Window->Control(id)); }

    OptionsDialogContext Context;
    VExportOptions Options;
    VAnimationTable Animations;
    ApplicationSettings Settings;
    ScriptedMessageBox Boxes;
    ScriptedView View;
    std::unique_ptr<ExportOptionsDialog> Dialog;
    std::unique_ptr<QtDialogWindow> Window;

private:
    TempSettings m_temp;
};

TEST_P(OptionsWindow, ShowsEveryControlWithItsTextInTabOrder)
{
    EXPECT_EQ(Window->windowTitle().toStdString(), Dialog->Layout().Caption);
    std::vector<QWidget*> focusable;
    for (const ControlSpec& definition : Dialog->Layout().Controls) {
        QWidget* control = Window->Control(definition.Id);
        ASSERT_NE(control, nullptr) << definition.Id;
        EXPECT_EQ(control->objectName().toInt(), definition.Id);
        if (auto* button = qobject_cast<QAbstractButton*>(control)) {
            EXPECT_EQ(button->text().toStdString(), (*Dialog)[definition.Id].Text) << definition.Id;
        }
        if (control->focusPolicy() != Qt::NoFocus)
            focusable.push_back(control);
    }
    // Tab moves through the controls in the layout's order.
    for (size_t index = 0; index + 1 < focusable.size(); ++index) {
        QWidget* next = focusable[index]->nextInFocusChain();
        while (next->focusPolicy() == Qt::NoFocus && next != focusable[index + 1])
            next = next->nextInFocusChain();
        EXPECT_EQ(next, focusable[index + 1]) << focusable[index]->objectName().toStdString();
    }
}

TEST_P(OptionsWindow, AdvancedCollapsesAndExpands)
{
    const auto shownBoxes = [this] {
        int shown = 0;
        for (const QGroupBox* box : Window->findChildren<QGroupBox*>())
            shown += box->isVisibleTo(Window.get());
        return shown;
    };
    const bool expanded = Dialog->Expanded();
    const int shown = shownBoxes();

    QTest::mouseClick(&Button(oc::Advanced), Qt::LeftButton);
    EXPECT_NE(Dialog->Expanded(), expanded);
    EXPECT_EQ(Button(oc::Advanced).text().toStdString(), Dialog->Expanded() ? "Advanced <<" : "Advanced >>");
    if (Dialog->Expanded()) {
        EXPECT_GT(shownBoxes(), shown);
    } else {
        EXPECT_LT(shownBoxes(), shown);
    }

    QTest::mouseClick(&Button(oc::Advanced), Qt::LeftButton);
    EXPECT_EQ(Dialog->Expanded(), expanded);
    EXPECT_EQ(shownBoxes(), shown);
}

TEST_P(OptionsWindow, SaveWithABadNumberKeepsTheWindowOpenAndFocusesTheField)
{
    auto* factor = qobject_cast<QLineEdit*>(Window->Control(oc::MeshFactor));
    ASSERT_NE(factor, nullptr);
    factor->selectAll();
    QTest::keyClicks(factor, "1.5x");
    QTest::mouseClick(&Button(oc::Save), Qt::LeftButton);

    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(Boxes.Requests[0].Text, "'1.5x' is not a number.\r\nPlease enter a number.");
    EXPECT_FALSE(Dialog->Ended());
    EXPECT_TRUE(Window->isVisible());
    EXPECT_EQ(Window->focusWidget(), factor);

    QTest::keyClick(factor, Qt::Key_Backspace);
    QTest::mouseClick(&Button(oc::Save), Qt::LeftButton);
    EXPECT_EQ(Dialog->Result(), 1);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FLOAT_EQ(Options.MeshFactor, 1.5f);
}

INSTANTIATE_TEST_SUITE_P(Dialogs, OptionsWindow, ::testing::Values(kFormatKindModel, kFormatKindStatic),
                         [](const auto& test) { return test.param == kFormatKindModel ? "Model" : "Mesh"; });

} // namespace
