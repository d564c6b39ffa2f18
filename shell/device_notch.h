#pragma once

#include <filesystem>
#include <optional>

namespace kelo::shell {

// Where the camera notch's facts live on a running system; tests point these at a fake tree.
struct DeviceTreeRoots {
    std::filesystem::path sys = "/sys";
    std::filesystem::path deviceTree = "/proc/device-tree";
};

// The height, in device pixels, of the notch that the display driver leaves visible.
//
// Apple laptops under Asahi Linux only show the notch when the display driver was asked to
// (module parameter show_notch of appledrm, or apple_dcp on older kernels); otherwise the driver
// hides the notch rows and the screen is an ordinary rectangle. The height comes from the display
// controller's device-tree node (a big-endian u32 "apple,notch-height" under soc/dcp@...).
//
// The notch's width is not in the device tree. It is left to the caller, which uses the fallback
// width in points: no per-model width has been measured on real hardware yet, and a guessed one
// would misplace the island worse than the fallback does.
[[nodiscard]] std::optional<int> deviceNotchHeight(const DeviceTreeRoots& roots = {});

} // namespace kelo::shell
