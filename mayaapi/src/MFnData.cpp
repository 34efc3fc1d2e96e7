#include <maya/MFnMatrixData.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnStringData.h>

#include "NumberCast.h"
#include "SceneGraph.h"

namespace {

void SetStatus(MStatus* status, MStatus value)
{
  if (status)
    *status = value;
}

template <typename T>
T* DataOf(const MObject& object)
{
  return dynamic_cast<T*>(object.standinData());
}

unsigned int CountOf(MFnNumericData::Type type)
{
  switch (type) {
  case MFnNumericData::k2Short:
  case MFnNumericData::k2Long:
  case MFnNumericData::k2Float:
  case MFnNumericData::k2Double: return 2;
  case MFnNumericData::k3Short:
  case MFnNumericData::k3Long:
  case MFnNumericData::k3Float:
  case MFnNumericData::k3Double: return 3;
  case MFnNumericData::k4Double: return 4;
  default: return 1;
  }
}

template <typename T>
MStatus Read(const MObject& object, unsigned int count, T* out)
{
  const auto* data = DataOf<standin::NumericData>(object);
  if (!data || data->count != count)
    return MS::kInvalidParameter;
  for (unsigned int i = 0; i < count; ++i)
    out[i] = standin::ClampTo<T>(data->values[i]);
  return MS::kSuccess;
}

MStatus Write(const MObject& object, unsigned int count, const double* values)
{
  auto* data = DataOf<standin::NumericData>(object);
  if (!data || data->count != count)
    return MS::kInvalidParameter;
  for (unsigned int i = 0; i < count; ++i)
    data->values[i] = values[i];
  return MS::kSuccess;
}

}

MFnNumericData::MFnNumericData(const MObject& object, MStatus* status) { SetStatus(status, setObject(object)); }

MObject MFnNumericData::create(Type dataType, MStatus* status)
{
  auto data = std::make_shared<standin::NumericData>();
  data->numericType = dataType;
  data->count = CountOf(dataType);
  setObject(MObject(std::shared_ptr<standin::Data>(data)));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MFnNumericData::Type MFnNumericData::numericType(MStatus* status) const
{
  const auto* data = DataOf<standin::NumericData>(m_object);
  SetStatus(status, data ? MS::kSuccess : MS::kFailure);
  if (!data)
    return kInvalid;
  if (data->numericType > 1)
    return static_cast<Type>(data->numericType);
  const bool isFloat = data->numericType == 1;
  switch (data->count) {
  case 2: return isFloat ? k2Float : k2Double;
  case 3: return isFloat ? k3Float : k3Double;
  default: return isFloat ? kFloat : kDouble;
  }
}

MStatus MFnNumericData::getData(float& a, float& b) const
{
  float v[2];
  const MStatus s = Read(m_object, 2, v);
  if (s) { a = v[0]; b = v[1]; }
  return s;
}

MStatus MFnNumericData::getData(double& a, double& b) const
{
  double v[2];
  const MStatus s = Read(m_object, 2, v);
  if (s) { a = v[0]; b = v[1]; }
  return s;
}

MStatus MFnNumericData::getData(float& a, float& b, float& c) const
{
  float v[3];
  const MStatus s = Read(m_object, 3, v);
  if (s) { a = v[0]; b = v[1]; c = v[2]; }
  return s;
}

MStatus MFnNumericData::getData(double& a, double& b, double& c) const
{
  double v[3];
  const MStatus s = Read(m_object, 3, v);
  if (s) { a = v[0]; b = v[1]; c = v[2]; }
  return s;
}

MStatus MFnNumericData::getData(int& a, int& b, int& c) const
{
  int v[3];
  const MStatus s = Read(m_object, 3, v);
  if (s) { a = v[0]; b = v[1]; c = v[2]; }
  return s;
}

MStatus MFnNumericData::setData(float a, float b) { const double v[2] = {a, b}; return Write(m_object, 2, v); }
MStatus MFnNumericData::setData(double a, double b) { const double v[2] = {a, b}; return Write(m_object, 2, v); }
MStatus MFnNumericData::setData(float a, float b, float c) { const double v[3] = {a, b, c}; return Write(m_object, 3, v); }
MStatus MFnNumericData::setData(double a, double b, double c) { const double v[3] = {a, b, c}; return Write(m_object, 3, v); }

MFnMatrixData::MFnMatrixData(const MObject& object, MStatus* status) { SetStatus(status, setObject(object)); }

MObject MFnMatrixData::create(const MMatrix& matrix, MStatus* status)
{
  auto data = std::make_shared<standin::MatrixData>();
  data->matrix = matrix;
  setObject(MObject(std::shared_ptr<standin::Data>(data)));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MMatrix MFnMatrixData::matrix(MStatus* status) const
{
  const auto* data = DataOf<standin::MatrixData>(m_object);
  SetStatus(status, data ? MS::kSuccess : MS::kFailure);
  return data ? data->matrix : MMatrix();
}

MStatus MFnMatrixData::set(const MMatrix& matrix)
{
  auto* data = DataOf<standin::MatrixData>(m_object);
  if (!data)
    return MS::kFailure;
  data->matrix = matrix;
  return MS::kSuccess;
}

MFnStringData::MFnStringData(const MObject& object, MStatus* status) { SetStatus(status, setObject(object)); }

MObject MFnStringData::create(const MString& text, MStatus* status)
{
  auto data = std::make_shared<standin::StringData>();
  data->text = text.asChar();
  setObject(MObject(std::shared_ptr<standin::Data>(data)));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MString MFnStringData::string(MStatus* status) const
{
  const auto* data = DataOf<standin::StringData>(m_object);
  SetStatus(status, data ? MS::kSuccess : MS::kFailure);
  return data ? MString(data->text) : MString();
}

MStatus MFnStringData::set(const MString& text)
{
  auto* data = DataOf<standin::StringData>(m_object);
  if (!data)
    return MS::kFailure;
  data->text = text.asChar();
  return MS::kSuccess;
}

MFnMeshData::MFnMeshData(const MObject& object, MStatus* status) { SetStatus(status, setObject(object)); }

MObject MFnMeshData::create(MStatus* status)
{
  auto data = std::make_shared<standin::MeshData>();
  data->mesh = std::make_shared<standin::Mesh>();
  setObject(MObject(std::shared_ptr<standin::Data>(data)));
  SetStatus(status, MS::kSuccess);
  return m_object;
}
