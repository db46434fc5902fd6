#include "session/calculation_record.h"

#include "base/files.h"

namespace quom {

std::string NewProtocolName(std::string_view program_path, std::string_view date) {
    const std::string six =
        date.size() == 10 ? std::string(date.substr(2, 2)).append(date.substr(5, 2)).append(date.substr(8))
                          : std::string("000000");
    constexpr int last = 999;
    for (int number = 1;; ++number) {
        std::string name = six + (number < 10 ? "0" : "") + std::to_string(number) + ".CSV";
        if (number == last || find_in_folder(program_path, name).empty()) return name;
    }
}

}  // namespace quom
