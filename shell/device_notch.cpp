#include "device_notch.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

namespace kelo::shell {
namespace {

bool parameterIsOn(const std::filesystem::path& file) {
    std::ifstream in(file);
    char first = 0;
    // Boolean module parameters read "Y" or "N"; "1" is accepted for integer-typed ones.
    return in.get(first) && (first == 'Y' || first == 'y' || first == '1');
}

bool notchShown(const std::filesystem::path& sys) {
    return parameterIsOn(sys / "module/appledrm/parameters/show_notch") ||
           parameterIsOn(sys / "module/apple_dcp/parameters/show_notch");
}

std::optional<std::uint32_t> bigEndianU32(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::array<unsigned char, 4> bytes{};
    if (!in.read(reinterpret_cast<char*>(bytes.data()), bytes.size())) {
        return std::nullopt;
    }
    return (std::uint32_t{bytes[0]} << 24) | (std::uint32_t{bytes[1]} << 16) |
           (std::uint32_t{bytes[2]} << 8) | std::uint32_t{bytes[3]};
}

// The internal panel's controller is "dcp@<address>"; external ports are "dcpext@..." and have
// no notch.
std::vector<std::filesystem::path> displayControllers(const std::filesystem::path& soc) {
    std::vector<std::filesystem::path> nodes;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(soc, ec), end; !ec && it != end; it.increment(ec)) {
        if (it->path().filename().string().starts_with("dcp@")) {
            nodes.push_back(it->path());
        }
    }
    std::sort(nodes.begin(), nodes.end());
    return nodes;
}

} // namespace

std::optional<int> deviceNotchHeight(const DeviceTreeRoots& roots) {
    if (!notchShown(roots.sys)) {
        return std::nullopt;
    }
    for (const auto& node : displayControllers(roots.deviceTree / "soc")) {
        const auto height = bigEndianU32(node / "apple,notch-height");
        // A height beyond any real panel means a damaged property, not a notch.
        if (height && *height > 0 && *height < 1000) {
            return static_cast<int>(*height);
        }
    }
    return std::nullopt;
}

} // namespace kelo::shell
