#include "base/dates.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace quom {
namespace {

std::string digits(int value, std::size_t width) {
    const std::string text = std::to_string(value);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

std::string date_text(std::time_t time) {
    std::tm parts{};
    if (localtime_r(&time, &parts) == nullptr) return {};
    return digits(parts.tm_year + 1900, 4) + "-" + digits(parts.tm_mon + 1, 2) + "-" +
           digits(parts.tm_mday, 2);
}

}  // namespace

std::string today_text() { return date_text(std::time(nullptr)); }

std::string now_text() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    if (localtime_r(&now, &parts) == nullptr) return {};
    return date_text(now) + ' ' + digits(parts.tm_hour, 2) + ':' + digits(parts.tm_min, 2);
}

std::string file_date_text(const std::string& path) {
    std::error_code ec;
    const auto written = std::filesystem::last_write_time(path, ec);
    if (ec) return {};
    return date_text(std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(
            std::chrono::file_clock::to_sys(written))));
}

}  // namespace quom
