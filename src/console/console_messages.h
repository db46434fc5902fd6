// Messages of the core on the console: written to the error stream, answered by default or by --answer.
#pragma once
#include <optional>
#include <ostream>

#include "base/messages.h"

namespace quom {

class ConsoleMessages : public Messages {
 public:
    ConsoleMessages(std::ostream& err, std::optional<Answer> forced) : err_(err), forced_(forced) {}
    // Writes title and text, and the answer taken where there is a choice.
    Answer ask(const Message& message) override;

 private:
    std::ostream& err_;
    std::optional<Answer> forced_;
};

}  // namespace quom
