#include "formats/ParameterString.h"

#include "model/VMShaderAssignment.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace {

// Answers false once the text is full.
bool Append(std::string& text, std::initializer_list<std::string_view> pieces)
{
    for (std::string_view piece : pieces) {
        const size_t room = ParameterStringLimit - 1 - text.size();
        if (piece.size() > room) {
            text.append(piece.substr(0, room));
            return false;
        }
        text.append(piece);
    }
    return true;
}

} // namespace

std::string MakeParameterString(const VMShaderAssignment& assignment)
{
    std::string text;
    bool room = true;
    for (const auto& parameter : assignment.Parameters) {
        room = Append(text, {parameter.Name, "=", parameter.Value, ";"});
        if (!room)
            break;
    }
    for (size_t i = 0; room && i < assignment.FurtherEntries.size(); ++i)
        room = Append(text, {"/", assignment.FurtherEntries[i], ";"});
    std::replace(text.begin(), text.end(), '|', ',');
    return text;
}
