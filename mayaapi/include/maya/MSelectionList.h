#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MPlug;

class MSelectionList {
public:
  enum MergeStrategy { kMergeNormal, kXORWithList, kRemoveFromList };

  MSelectionList() = default;

  unsigned int length(MStatus* status = nullptr) const;
  bool isEmpty(MStatus* status = nullptr) const { return length(status) == 0; }
  MStatus clear() { m_items.clear(); return MS::kSuccess; }
  MStatus add(const MObject& node, bool mergeWithExisting = false);
  MStatus add(const MDagPath& path, const MObject& component = MObject::kNullObj, bool mergeWithExisting = false);
  MStatus add(const MString& matchString, bool searchChildNamespacesToo = false);
  MStatus remove(unsigned int index);
  MStatus getDagPath(unsigned int index, MDagPath& path, MObject& component) const;
  MStatus getDagPath(unsigned int index, MDagPath& path) const;
  MStatus getDependNode(unsigned int index, MObject& node) const;
  MStatus getPlug(unsigned int index, MPlug& plug) const;
  bool hasItem(const MObject& node, MStatus* status = nullptr) const;
  MStatus merge(const MSelectionList& other, MergeStrategy strategy = kMergeNormal);

private:
  struct Item {
    MObject node;
    MDagPath path;
    MObject component;
  };
  std::vector<Item> m_items;
};
