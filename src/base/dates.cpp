#include "base/dates.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <system_error>

namespace quom {
namespace {

std::string digits(int value, std::size_t width) {
    const std::string text = std::to_string(value);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

std::string date_text(const std::tm& parts) {
    return digits(parts.tm_year + 1900, 4) + "-" + digits(parts.tm_mon + 1, 2) + "-" +
           digits(parts.tm_mday, 2);
}

// In local time; none for a time that has no date.
std::optional<std::tm> parts_of(std::time_t time) {
    std::tm parts{};
    if (localtime_r(&time, &parts) == nullptr) return {};
    return parts;
}

std::optional<std::tm> written_at(const std::string& path) {
    std::error_code ec;
    const auto written = std::filesystem::last_write_time(path, ec);
    if (ec) return {};
    return parts_of(std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(
            std::chrono::file_clock::to_sys(written))));
}

// The day of "2026-11-21"; none when it is no date.
std::optional<std::chrono::year_month_day> day_of(const std::string& date) {
    int year = 0;
    unsigned month = 0, day = 0;
    char end = 0;
    if (std::sscanf(date.c_str(), "%4d-%2u-%2u%c", &year, &month, &day, &end) != 3) return {};
    const std::chrono::year_month_day found{std::chrono::year(year), std::chrono::month(month),
                                            std::chrono::day(day)};
    if (!found.ok()) return {};
    return found;
}

}  // namespace

std::string today_text() {
    const auto parts = parts_of(std::time(nullptr));
    return parts ? date_text(*parts) : std::string();
}

std::string now_text() {
    const auto parts = parts_of(std::time(nullptr));
    if (!parts) return {};
    return date_text(*parts) + " " + digits(parts->tm_hour, 2) + ":" + digits(parts->tm_min, 2);
}

std::string file_date_text(const std::string& path) {
    const auto parts = written_at(path);
    return parts ? date_text(*parts) : std::string();
}

std::string file_time_text(const std::string& path) {
    const auto parts = written_at(path);
    return parts ? digits(parts->tm_hour, 2) + ":" + digits(parts->tm_min, 2) : std::string();
}

std::string spoken_day(const std::string& date, const std::string& today) {
    constexpr const char* Months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto then = day_of(date), now = day_of(today);
    if (!then || !now) return date;
    const auto days = (std::chrono::sys_days(*now) - std::chrono::sys_days(*then)).count();
    if (days == 0) return "today";
    if (days == 1) return "yesterday";
    std::string text = std::to_string(static_cast<unsigned>(then->day())) + " " +
                       Months[static_cast<unsigned>(then->month()) - 1];
    if (then->year() != now->year()) text += " " + std::to_string(static_cast<int>(then->year()));
    return text;
}

}  // namespace quom
