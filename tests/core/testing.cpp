#include "testing.h"

#include "day.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace kelo::testing {

ScratchFolder::ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kelo-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot create a scratch folder");
    }
    path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void writeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

Calendar calendar(std::string_view zone, std::string_view locale) {
    auto made = Calendar::make(zone, locale);
    if (!made) {
        ADD_FAILURE() << "unknown zone " << zone;
        return *Calendar::make("UTC", "en_US");
    }
    return *made;
}

Timestamp wallTime(const Calendar& calendar, std::string_view dayAndTime) {
    const auto day = Day::civil(dayAndTime.substr(0, 10));
    const int hour = std::stoi(std::string(dayAndTime.substr(11, 2)));
    const int minute = std::stoi(std::string(dayAndTime.substr(14, 2)));
    if (!day) {
        ADD_FAILURE() << "not a day: " << dayAndTime;
        return {};
    }
    return calendar.at(*day, hour, minute);
}

Timestamp utc(std::string_view internetDateTime) {
    const auto time = parseInternetDateTime(internetDateTime);
    if (!time) {
        ADD_FAILURE() << "not an internet date-time: " << internetDateTime;
        return {};
    }
    return *time;
}

} // namespace kelo::testing
