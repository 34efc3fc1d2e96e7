#pragma once

#include <maya/MFn.h>

#include <memory>

namespace standin {
struct Node;
struct Attribute;
struct Data;
}

// A handle on a node, an attribute or a data object of the scene.
class MObject {
public:
  MObject() = default;
  explicit MObject(standin::Node* node) : m_node(node) {}
  explicit MObject(standin::Attribute* attribute) : m_attribute(attribute) {}
  explicit MObject(std::shared_ptr<standin::Data> data) : m_data(std::move(data)) {}

  bool isNull() const { return !m_node && !m_attribute && !m_data; }
  MFn::Type apiType() const;
  bool hasFn(MFn::Type type) const;
  const char* apiTypeStr() const;
  bool operator==(const MObject& other) const
  {
    return m_node == other.m_node && m_attribute == other.m_attribute && m_data == other.m_data;
  }
  bool operator!=(const MObject& other) const { return !(*this == other); }

  standin::Node* standinNode() const { return m_node; }
  standin::Attribute* standinAttribute() const { return m_attribute; }
  standin::Data* standinData() const { return m_data.get(); }
  const std::shared_ptr<standin::Data>& standinDataRef() const { return m_data; }

  static const MObject kNullObj;

private:
  standin::Node* m_node = nullptr;
  standin::Attribute* m_attribute = nullptr;
  std::shared_ptr<standin::Data> m_data;
};
