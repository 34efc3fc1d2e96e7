#include "ui/BatchMessageBox.h"

#include "base/TextUtil.h"

#include <string>
#include <string_view>

namespace {

std::string WithNativeLineEnds(std::string_view text)
{
    std::string native;
    native.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            native += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
            continue;
        }
        native += text[i];
    }
    return native;
}

// A text that begins with its own caption ("Error! Could not ..." under "Error") is printed alone,
// so that the line does not say the same word twice.
bool RepeatsCaption(std::string_view caption, std::string_view text)
{
    while (!caption.empty() && (caption.back() == '!' || caption.back() == ':'))
        caption.remove_suffix(1);
    if (caption.empty() || text.size() <= caption.size() || !EqualsNoCase(text.substr(0, caption.size()), caption))
        return false;
    const char next = text[caption.size()];
    return next == '!' || next == ':';
}

} // namespace

BatchMessageBox::BatchMessageBox(std::FILE* out)
    : m_out(out)
{
}

VMessageBoxAnswer BatchMessageBox::Show(const VMessageBoxRequest& request)
{
    std::string line = WithNativeLineEnds(RepeatsCaption(request.Caption, request.Text)
                                              ? request.Text
                                              : request.Caption + ": " + request.Text);
    while (!line.empty() && line.back() == '\n')
        line.pop_back();
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), m_out);
    std::fflush(m_out);
    return request.DefaultAnswer;
}
