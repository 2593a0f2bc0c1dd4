#pragma once

#include "image/HueKernels.h"
#include "image/LXRGBA32i.h"

/// A color turned as HueKernels turns rows of them: one at a time, in the same single precision, each step
/// where the kernels have it.
namespace HueTwin {
LXRGBA32i Turned(const HueRule& rule, LXRGBA32i pixel);
} // namespace HueTwin
