#pragma once

#include <cmath>
#include <limits>

namespace standin {

// Plug values are doubles set by scripts and files; narrowing one that does not fit would be undefined, so it is
// clamped to the target's range (and NaN read as 0).
template <typename T>
T ClampTo(double value)
{
  if (std::isnan(value))
    return T(0);
  if constexpr (std::numeric_limits<T>::is_integer) {
    if (value <= static_cast<double>(std::numeric_limits<T>::min()))
      return std::numeric_limits<T>::min();
    if (value >= static_cast<double>(std::numeric_limits<T>::max()))
      return std::numeric_limits<T>::max();
    return static_cast<T>(value);
  } else {
    if (std::isinf(value))
      return static_cast<T>(value);
    const double limit = static_cast<double>(std::numeric_limits<T>::max());
    return static_cast<T>(value < -limit ? -limit : (value > limit ? limit : value));
  }
}

// A rotate order enum value, with anything outside xyz..zyx read as xyz.
inline int RotateOrderIndex(double value)
{
  const int order = ClampTo<int>(value);
  return order >= 0 && order < 6 ? order : 0;
}

}
