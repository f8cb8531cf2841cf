#pragma once

#include "core/Geometry.h"

// What the watches expect of panels, written down anew: the product's own constants would agree with any
// change.
namespace pellar {

constexpr double stripHeight = 32;    // points
constexpr Size pickerSize{372, 150};  // points

}  // namespace pellar
