#include "importers/mayaascii/MayaAsciiPlugPath.h"

#include "base/Number.h"

#include <string_view>

namespace {

bool ParseIndex(std::string_view text, unsigned int& index)
{
    long long value = 0;
    if (text.empty() || text.front() == '-' || text.front() == '+' || !ParseInt(text, value) || value > 0x7fffffff)
        return false;
    index = static_cast<unsigned int>(value);
    return true;
}

bool ParseSegment(std::string_view text, MaPlugSegment& segment)
{
    const size_t open = text.find('[');
    segment.Name = std::string(text.substr(0, open));
    if (segment.Name.empty())
        return false;
    if (open == std::string_view::npos)
        return true;
    if (text.back() != ']')
        return false;
    const std::string_view inside = text.substr(open + 1, text.size() - open - 2);
    const size_t colon = inside.find(':');
    unsigned int first = 0;
    if (!ParseIndex(inside.substr(0, colon), first))
        return false;
    segment.First = first;
    segment.Last = first;
    return colon == std::string_view::npos ||
           (ParseIndex(inside.substr(colon + 1), segment.Last) && segment.Last >= first);
}

} // namespace

int MaPlugPath::RangeSegment() const
{
    for (size_t i = 0; i < Segments.size(); ++i)
        if (Segments[i].First && Segments[i].Last != *Segments[i].First)
            return static_cast<int>(i);
    return -1;
}

bool ParsePlugPath(const std::string& text, MaPlugPath& path)
{
    // A node name holds no '.', so the first one ends it (DAG paths use '|', namespaces ':').
    const size_t dot = text.find('.');
    if (dot == std::string::npos || dot + 1 == text.size())
        return false;
    path.Node = text.substr(0, dot);
    path.Segments.clear();
    int ranges = 0;
    for (size_t at = dot + 1; at <= text.size();) {
        const size_t end = std::min(text.find('.', at), text.size());
        MaPlugSegment segment;
        if (!ParseSegment(std::string_view(text).substr(at, end - at), segment))
            return false;
        if (segment.First && segment.Last != *segment.First && ++ranges > 1)
            return false;
        path.Segments.push_back(std::move(segment));
        at = end + 1;
    }
    return true;
}
