#include "ui/KeyFramesDialog.h"

#include "base/TextUtil.h"
#include "settings/VAnimationDescription.h"
#include "ui/DialogLayoutBuilder.h"

#include <algorithm>

namespace {

constexpr double kTicksPerSecond = 24000.0;

DialogLayout KeyFramesLayout()
{
    DialogLayoutBuilder b(116, "Key frames");
    b.Section("", 0);
    b.Add(kKeyFrameList, ControlKind::List, "Sampled at (seconds):");
    b.NextRow().Add(kIdOk, ControlKind::Button, "OK");
    return b.Build();
}

} // namespace

KeyFramesDialog::KeyFramesDialog(const VAnimationDescription& entry)
    : Dialog(KeyFramesLayout())
    , m_entry(entry)
{
}

void KeyFramesDialog::Open()
{
    ControlState& list = (*this)[kKeyFrameList];
    const size_t count = std::min(static_cast<size_t>(std::max(m_entry.KeyFrameCount, 0)), m_entry.KeyFrameTimes.size());
    for (size_t i = 0; i < count; ++i)
        list.Items.push_back(Format("%.3f", m_entry.KeyFrameTimes[i] / kTicksPerSecond));
    if (list.Items.empty())
        list.Items.emplace_back("None yet: an export samples them");
}

void KeyFramesDialog::Command(int id)
{
    if (id == kIdOk || id == kIdCancel)
        End(id == kIdOk ? 1 : 0);
}
