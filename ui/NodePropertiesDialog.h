#pragma once
// "Zephra Geometry Properties": whether a world node is visible in the engine and its collision
// bits, edited as a number or bit by bit through "Edit Bitmask".

#include "ui/Dialog.h"

#include <cstdint>
#include <string>

class VDialogView;
class VMessageBox;

namespace NodeControl {
inline constexpr int NodeName = 1094;
inline constexpr int Visible = 1105;
inline constexpr int CollisionFlags = 1323;
inline constexpr int EditBits = 1312;
} // namespace NodeControl

// The node's two attributes as the dialog shows them: a node without "Visible" is visible, one
// without "CollisionFlags" collides with everything the default 16 bits name.
struct NodeProperties {
    std::string NodeName;
    bool Visible = true;
    uint32_t CollisionFlags = 65535;
};

class NodePropertiesDialog final : public Dialog {
public:
    // properties changes only on OK; bitNamesPath is "CollisionBitsWorld.txt" in the data folder.
    NodePropertiesDialog(NodeProperties& properties, std::string bitNamesPath, VMessageBox& messageBox,
                         VDialogView* view);

    void Open() override;
    void Command(int id) override;

private:
    // The field's value; a field that holds no number is refused with a message.
    bool ReadFlags(uint32_t& flags);

    NodeProperties& m_properties;
    std::string m_bitNamesPath;
    VMessageBox& m_messageBox;
    VDialogView* m_view;
};
