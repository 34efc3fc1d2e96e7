#include "settings/AnimationText.h"

#include "base/TextUtil.h"
#include "report/DebugFile.h"
#include "settings/NameEscaping.h"
#include "settings/ScanNumber.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr size_t kMaxSavedNameLength = 255;
constexpr size_t kMaxValueLength = 1023;

struct IntKey {
    std::string_view Name;
    int32_t VAnimationDescription::*Field;
};

using D = VAnimationDescription;

// In the order they are written, between "AnimFile:" and the rotation axis.
constexpr std::array<IntKey, 15> kIntKeys {{
    {"AnimType:", &D::Type},
    {"AnimLooped:", &D::Looped},
    {"AnimUseRange:", &D::UseRange},
    {"AnimRangeStart:", &D::RangeStart},
    {"AnimRangeEnd:", &D::RangeEnd},
    {"UseMaxFrames:", &D::UseMaxFrames},
    {"EstimateFrames:", &D::EstimateFrames},
    {"EstimateLevel:", &D::EstimateLevel},
    {"AnimFrames:", &D::Frames},
    {"AnimMotionDelta:", &D::MotionDelta},
    {"AnimCompRot:", &D::CompensateRotation},
    {"AnimCompOfs:", &D::CompensateOffset},
    {"AnimMovX:", &D::MoveX},
    {"AnimMovY:", &D::MoveY},
    {"AnimMovZ:", &D::MoveZ},
}};

constexpr std::array<std::string_view, 3> kRotationKeys {"AnimRotX:", "AnimRotY:", "AnimRotZ:"};
// Older blocks named the axes to keep still instead of those to extract.
constexpr std::array<std::string_view, 3> kExcludeKeys {"AnimExcludeX:", "AnimExcludeY:", "AnimExcludeZ:"};
constexpr std::array<int32_t D::*, 3> kMoveFields {&D::MoveX, &D::MoveY, &D::MoveZ};

std::string SavedName(std::string_view name) { return EscapeName(name).substr(0, kMaxSavedNameLength); }

bool IsCSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }

class TokenReader {
public:
    explicit TokenReader(std::string_view text) : m_text(text) {}

    // Skips "//" tokens; false at the end of the text.
    bool Next(std::string_view& token)
    {
        do {
            if (!NextRaw(token))
                return false;
        } while (token == "//");
        return true;
    }

private:
    bool NextRaw(std::string_view& token)
    {
        while (m_pos < m_text.size() && IsCSpace(m_text[m_pos]))
            ++m_pos;
        if (m_pos == m_text.size())
            return false;
        const size_t start = m_pos;
        while (m_pos < m_text.size() && !IsCSpace(m_text[m_pos]))
            ++m_pos;
        token = m_text.substr(start, m_pos - start);
        return true;
    }

    std::string_view m_text;
    size_t m_pos = 0;
};

// A name that holds the block's start marker would make the next load skip everything before it.
bool IsStorableName(std::string_view name) { return name.find("<OPTIONS>") == std::string_view::npos; }

class AnimationLoader {
public:
    explicit AnimationLoader(VAnimationTable& animations) : m_animations(animations) {}

    void Apply(std::string_view key, std::string_view value)
    {
        if (EqualsNoCase(key, "NumAnimations:"))
            SetCount(value);
        else if (EqualsNoCase(key, "Animation:"))
            StartNextEntry(value);
        else if (VAnimationDescription* entry = Current())
            ApplyToEntry(*entry, key, value);
    }

private:
    void SetCount(std::string_view value)
    {
        int32_t count = 0;
        if (ScanDecimalInt(value, count) == 0)
            return;
        if (count > VAnimationTable::kCapacity)
            DebugPrint("Only the first %d of %d animations are loaded\r\n", VAnimationTable::kCapacity, count);
        m_animations.Reset(count);
        m_current = -1;
    }

    void StartNextEntry(std::string_view value)
    {
        if (m_current < m_animations.Count())
            ++m_current;
        VAnimationDescription* entry = Current();
        if (!entry)
            return;
        if (IsStorableName(value))
            entry->Name = UnescapeName(value);
        // Blocks of older versions lack the keys below; these are the values they implied.
        entry->CompensateRotation = 0;
        entry->CompensateOffset = 0;
        entry->MoveX = entry->MoveY = entry->MoveZ = 1;
        entry->RotationAxis = 0;
        entry->EstimateFrames = 0;
        entry->EstimateLevel = 2;
        entry->Compressed = false;
    }

    VAnimationDescription* Current()
    {
        return m_current >= 0 && m_current < m_animations.Count() ? &m_animations[m_current] : nullptr;
    }

    static void ApplyToEntry(VAnimationDescription& entry, std::string_view key, std::string_view value)
    {
        if (EqualsNoCase(key, "AnimFile:")) {
            if (IsStorableName(value))
                entry.SourceFile = UnescapeName(value);
            return;
        }
        for (const IntKey& intKey : kIntKeys) {
            if (EqualsNoCase(key, intKey.Name)) {
                ScanDecimalInt(value, entry.*intKey.Field);
                return;
            }
        }
        for (size_t axis = 0; axis < kRotationKeys.size(); ++axis) {
            if (EqualsNoCase(key, kRotationKeys[axis])) {
                if (value.starts_with('1'))
                    entry.RotationAxis = static_cast<int32_t>(axis) + 1;
                return;
            }
        }
        for (size_t axis = 0; axis < kExcludeKeys.size(); ++axis) {
            if (EqualsNoCase(key, kExcludeKeys[axis])) {
                int32_t excluded = 0;
                if (ScanDecimalInt(value, excluded) != 0)
                    entry.*kMoveFields[axis] = excluded == 0 ? 1 : 0;
                return;
            }
        }
        int32_t number = 0;
        if (EqualsNoCase(key, "AnimStaticOffset:")) {
            if (ScanDecimalInt(value, number) != 0) {
                entry.MotionDelta = number;
                entry.MoveX = entry.MoveY = entry.MoveZ = 1;
            }
        } else if (EqualsNoCase(key, "AnimCompressed:")) {
            if (ScanDecimalInt(value, number) != 0)
                entry.Compressed = number != 0;
        }
    }

    VAnimationTable& m_animations;
    int m_current = -1;
};

} // namespace

std::string SaveAnimationsToString(const VAnimationTable& animations)
{
    DebugPrint("SaveAnimationsToString()\r\n");
    std::string text = Format("// NumAnimations: %d\r\n", animations.Count());
    for (const VAnimationDescription& entry : animations) {
        text += "// Animation: " + SavedName(entry.Name) + "\r\n";
        text += "// AnimFile: " + SavedName(entry.SourceFile) + "\r\n";
        for (const IntKey& key : kIntKeys)
            text += Format("// %.*s %d\r\n", static_cast<int>(key.Name.size()), key.Name.data(), entry.*key.Field);
        for (size_t axis = 0; axis < kRotationKeys.size(); ++axis) {
            const bool isAxis = entry.RotationAxis == static_cast<int32_t>(axis) + 1;
            text += Format("// %.*s %d\r\n", static_cast<int>(kRotationKeys[axis].size()), kRotationKeys[axis].data(),
                           isAxis ? 1 : 0);
        }
        text += Format("// AnimCompressed: %d\r\n", entry.Compressed ? 1 : 0);
    }
    DebugPrint("End of SaveAnimationsToString()\r\n");
    return text;
}

void LoadAnimationsFromString(std::string_view text, VAnimationTable& animations)
{
    DebugPrint("LoadAnimationsFromString()\r\n");
    if (text.empty()) {
        DebugPrint("Animation options string was NULL\r\n");
        return;
    }
    AnimationLoader loader(animations);
    TokenReader reader(text);
    std::string_view key;
    std::string_view value;
    while (reader.Next(key) && reader.Next(value)) {
        if (value.size() <= kMaxValueLength)
            loader.Apply(key, value);
    }
}
