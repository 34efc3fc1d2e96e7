#pragma once

class MSpace {
public:
  enum Space { kInvalid = 0, kTransform = 1, kPreTransform = 2, kPostTransform = 3, kWorld = 4, kObject = kPreTransform, kLast = 5 };
};

using MCreatorFunction = void* (*)();
using MCreateSyntaxFunction = class MSyntax (*)();

namespace MS {
enum MStatusCode {
  kSuccess = 0,
  kFailure,
  kInsufficientMemory,
  kInvalidParameter,
  kLicenseFailure,
  kUnknownParameter,
  kNotImplemented,
  kNotFound,
  kEndOfFile
};
}
