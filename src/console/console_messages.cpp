#include "console/console_messages.h"

#include "base/code_page.h"

namespace quom {
namespace {

const char* word_of(Answer answer) {
    switch (answer) {
        case Answer::ok:
            return "OK";
        case Answer::cancel:
            return "Cancel";
        case Answer::yes:
            return "Yes";
        case Answer::no:
            return "No";
    }
    return "";
}

// --answer yes means Yes or OK, no means No or, where there is none, Cancel.
Answer chosen(const Message& message, Answer wanted) {
    switch (message.buttons) {
        case Buttons::ok:
            return Answer::ok;
        case Buttons::ok_cancel:
            return wanted == Answer::yes ? Answer::ok : Answer::cancel;
        case Buttons::yes_no:
        case Buttons::yes_no_cancel:
            return wanted;
    }
    return message.default_button;
}

}  // namespace

Answer ConsoleMessages::ask(const Message& message) {
    const Answer answer = forced_ ? chosen(message, *forced_) : message.default_button;
    err_ << trim(message.title) << ": " << message.text;
    if (message.buttons != Buttons::ok) err_ << " [" << word_of(answer) << "]";
    err_ << '\n';
    return answer;
}

}  // namespace quom
