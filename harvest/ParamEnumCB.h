#pragma once
// Offers every top-level attribute of a node to a callback by its kind, so that a harvest step
// can pick the attributes it knows by name and ignore the rest.

#include <maya/MObject.h>

class ParamEnumCB {
public:
    virtual ~ParamEnumCB() = default;

    virtual void FloatParam(const char* /*name*/, float /*value*/) {}
    virtual void IntParam(const char* /*name*/, int /*value*/) {}
    virtual void StringParam(const char* /*name*/, const char* /*text*/) {}
    virtual void Float2Param(const char* /*name*/, const float* /*values*/) {}
    virtual void Float3Param(const char* /*name*/, const float* /*values*/) {}
    virtual void EnumParam(const char* /*name*/, int /*value*/, const char* /*fieldName*/) {}
};

// Every attribute of the node that is not a child of a compound, in the node's attribute order:
// enums to EnumParam; booleans, bytes, chars, shorts and ints to IntParam; floats and doubles to
// FloatParam; pairs and triples of them to Float2Param and Float3Param; string attributes to
// StringParam. Other kinds are skipped.
void EnumerateNodeParams(const MObject& node, ParamEnumCB& callback);
