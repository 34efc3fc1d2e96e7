#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>

class MItSelectionList {
public:
  enum selItemType { kUnknownItem, kDagSelectionItem, kAnimSelectionItem, kDNselectionItem, kPlugSelectionItem };

  MItSelectionList(const MSelectionList& list, MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

  bool isDone(MStatus* status = nullptr) const;
  MStatus next();
  MStatus reset();
  MStatus getDagPath(MDagPath& path, MObject& component) const;
  MStatus getDagPath(MDagPath& path) const;
  MStatus getDependNode(MObject& node) const;
  selItemType itemType(MStatus* status = nullptr) const;

private:
  void SkipFiltered();

  MSelectionList m_list;
  MFn::Type m_filter;
  unsigned int m_index = 0;
};
