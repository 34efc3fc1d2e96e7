#include "ui/BatchMessageBox.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>

namespace {

class BatchMessageBoxTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(m_out, nullptr); }
    void TearDown() override { std::fclose(m_out); }

    std::string Printed()
    {
        std::fflush(m_out);
        std::rewind(m_out);
        std::string text;
        for (int c = std::fgetc(m_out); c != EOF; c = std::fgetc(m_out))
            text += static_cast<char>(c);
        return text;
    }

    std::FILE* m_out = std::tmpfile();
};

} // namespace

// A text that begins with its own caption is printed once.
TEST_F(BatchMessageBoxTest, EachBoxTakesItsDefaultAnswerAndIsPrintedOnceWithNativeLineEnds)
{
    BatchMessageBox box(m_out);
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = "Unable to execute 'a.exe'\r\n(Error:0x2)\r\n";
    request.Buttons = VMessageBoxButtons::YesNo;
    request.DefaultAnswer = VMessageBoxAnswer::No;
    EXPECT_EQ(box.Show(request), VMessageBoxAnswer::No);
    request.Caption = "Note";
    request.Text = "one\rtwo";
    request.DefaultAnswer = VMessageBoxAnswer::Yes;
    EXPECT_EQ(box.Show(request), VMessageBoxAnswer::Yes);
    for (const auto& [caption, text] : {std::pair {"Error", "Error! Could not make ExportSkip attribute"},
                                        {"Warning!", "warning: the scaling is extremely low\r\n"},
                                        {"Errors", "Error: none"}}) {
        request.Caption = caption;
        request.Text = text;
        box.Show(request);
    }
    EXPECT_EQ(Printed(), "Error: Unable to execute 'a.exe'\n(Error:0x2)\nNote: one\ntwo\n"
                         "Error! Could not make ExportSkip attribute\n"
                         "warning: the scaling is extremely low\n"
                         "Errors: Error: none\n");
    EXPECT_EQ(box.Show(VMessageBoxRequest()), VMessageBoxAnswer::Ok);
}
