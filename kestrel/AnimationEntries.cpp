#include "kestrel/AnimationEntries.h"

#include "base/Number.h"
#include "base/TextUtil.h"

#include <cmath>
#include <limits>

namespace {

// Clip ends read from files land a little off whole frames.
constexpr double FrameTolerance = 1e-3;

std::vector<std::string_view> SplitAt(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    size_t start = 0;
    for (size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, start)) {
        parts.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

VAnimationDescription SampledOncePerFrame(std::string name, int32_t type, int32_t start, int32_t end)
{
    VAnimationDescription entry;
    entry.Name = std::move(name);
    entry.Type = type;
    entry.UseRange = 1;
    entry.RangeStart = start;
    entry.RangeEnd = end;
    entry.UseMaxFrames = 0;
    entry.Frames = type == kAnimTypeMorphTarget ? 1 : 0;
    return entry;
}

bool ReadRange(std::string_view text, int32_t& start, int32_t& end)
{
    const size_t dash = text.find('-');
    int first = 0;
    int last = 0;
    if (dash == std::string_view::npos || !ParseInt(text.substr(0, dash), first) ||
        !ParseInt(text.substr(dash + 1), last))
        return false;
    start = first;
    end = last;
    return true;
}

// Null when the option was taken; else the problem.
const char* TakeOption(std::string_view option, VAnimationDescription& entry)
{
    if (option == "loop") {
        entry.Looped = 1;
        return nullptr;
    }
    const size_t equals = option.find('=');
    const std::string_view key = option.substr(0, equals);
    const std::string_view value = equals == std::string_view::npos ? std::string_view {} : option.substr(equals + 1);
    if (key == "type") {
        if (value == "bone")
            entry.Type = kAnimTypeBone;
        else if (value == "muscle")
            entry.Type = kAnimTypeMuscle;
        else if (value == "morph")
            entry.Type = kAnimTypeMorphTarget;
        else
            return "the type is bone, muscle or morph";
        return nullptr;
    }
    if (key == "motion") {
        if (value.empty() || value.find_first_not_of("xyz") != std::string_view::npos)
            return "motion names the axes x, y and z, as in motion=xy";
        entry.MotionDelta = 1;
        entry.MoveX = value.find('x') != std::string_view::npos;
        entry.MoveY = value.find('y') != std::string_view::npos;
        entry.MoveZ = value.find('z') != std::string_view::npos;
        return nullptr;
    }
    if (key == "rot") {
        if (value.size() != 1 || value.find_first_not_of("xyz") != std::string_view::npos)
            return "rot names one axis: x, y or z";
        entry.MotionDelta = 1;
        entry.RotationAxis = 1 + static_cast<int32_t>(value[0] - 'x');
        return nullptr;
    }
    return "the options are loop, type=, motion= and rot=";
}

} // namespace

std::optional<VAnimationDescription> ParseAnimationEntry(std::string_view text, std::string& error)
{
    const std::vector<std::string_view> parts = SplitAt(text, ':');
    int32_t start = 0;
    int32_t end = 0;
    if (parts.size() < 2 || parts[0].empty() || !ReadRange(parts[1], start, end)) {
        error = "it is not of the form NAME:START-END[:loop][:type=bone|muscle|morph][:motion=xyz][:rot=x|y|z]";
        return std::nullopt;
    }
    if (start < 0 || end < start) {
        error = "the range must start at frame 0 or later and end no earlier than it starts";
        return std::nullopt;
    }
    VAnimationDescription entry = SampledOncePerFrame(std::string(parts[0]), kAnimTypeBone, start, end);
    for (size_t i = 2; i < parts.size(); ++i) {
        if (const char* problem = TakeOption(parts[i], entry)) {
            error = Format("'%.*s': %s", static_cast<int>(parts[i].size()), parts[i].data(), problem);
            return std::nullopt;
        }
    }
    if (entry.Type == kAnimTypeMorphTarget && entry.Looped) {
        error = "a morph target is one pose and cannot loop";
        return std::nullopt;
    }
    if (entry.Type == kAnimTypeMorphTarget)
        entry.Frames = 1;
    return entry;
}

std::vector<VAnimationDescription> ClipEntries(const std::vector<ImportedClip>& clips, int32_t type,
                                               std::vector<std::string>& skipped)
{
    constexpr double Highest = std::numeric_limits<int32_t>::max();
    std::vector<VAnimationDescription> entries;
    for (const ImportedClip& clip : clips) {
        const double start = std::floor(clip.StartFrame + FrameTolerance);
        const double end = std::max(start, std::ceil(clip.EndFrame - FrameTolerance));
        if (!(start >= 0.0) || !(end <= Highest)) {
            skipped.push_back(clip.Name);
            continue;
        }
        entries.push_back(SampledOncePerFrame(clip.Name, type, static_cast<int32_t>(start), static_cast<int32_t>(end)));
    }
    return entries;
}
