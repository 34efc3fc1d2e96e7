#pragma once
// What the reader knows of Maya's node types and attributes beyond those the stand-in models.

#include <string_view>

// Maya's own node types that hold nothing an export reads (render settings, editor layouts, bookkeeping); files
// carry them in every scene, so they are passed over without a warning.
bool IsWithoutExportEffect(std::string_view nodeType);

// Maya's transform kinds the stand-in has no type for (IK handles and effectors, level-of-detail groups,
// containers ...): built as plain transforms, so that the hierarchy below them and their placement stay.
bool IsTransformKind(std::string_view nodeType);

// Maya attributes (long or short name) of the node types the stand-in models that no export reads: display and
// editor state, render settings, limits. Their setAttr and connectAttr are passed over without a warning.
bool IsAttributeWithoutExportEffect(std::string_view attribute);
