#include "ui/BatchMessageBox.h"

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

} // namespace

BatchMessageBox::BatchMessageBox(std::FILE* out)
    : m_out(out)
{
}

VMessageBoxAnswer BatchMessageBox::Show(const VMessageBoxRequest& request)
{
    std::string line = WithNativeLineEnds(request.Caption + ": " + request.Text);
    while (!line.empty() && line.back() == '\n')
        line.pop_back();
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), m_out);
    std::fflush(m_out);
    return request.DefaultAnswer;
}
