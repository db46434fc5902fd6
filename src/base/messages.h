// The one place through which the core speaks to the user: boxes with an answer, and progress.
#pragma once
#include <functional>
#include <string>

namespace quom {

enum class MessageKind { info, warning, question, stop };
enum class Buttons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class Answer { ok, cancel, yes, no };

struct Message {
    std::string title;
    std::string text;  // lines separated by '\n'
    Buttons buttons = Buttons::ok;
    Answer default_button = Answer::ok;
    MessageKind kind = MessageKind::info;
};

// Shows a message and returns the answer. The desktop shows a box, the console writes to standard error
// and takes the default (or what --answer says), tests queue answers and read what was asked.
class Messages {
 public:
    virtual ~Messages() = default;
    virtual Answer ask(const Message& message) = 0;
};

// A user who is not there: every question gets its default answer.
class SilentMessages final : public Messages {
 public:
    Answer ask(const Message& message) override { return message.default_button; }
};

// Progress of anything that can last over half a second. fraction is 0 to 1; returns true to cancel.
using Progress = std::function<bool(double fraction, const std::string& text)>;

}  // namespace quom
