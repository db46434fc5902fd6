// Questions of the core on the console.
#include <gtest/gtest.h>

#include <sstream>

#include "console/console_messages.h"

namespace quom {
namespace {

TEST(ConsoleMessages, answers_by_default_or_as_told) {
    const struct {
        Buttons buttons;
        Answer by_default;
        std::optional<Answer> forced;
        Answer answer;
        const char* text;
    } cases[] = {
        {Buttons::ok, Answer::ok, Answer::no, Answer::ok, "WARNING: Delete?\n"},
        {Buttons::yes_no, Answer::no, {}, Answer::no, "WARNING: Delete? [No]\n"},
        {Buttons::yes_no, Answer::no, Answer::yes, Answer::yes, "WARNING: Delete? [Yes]\n"},
        {Buttons::ok_cancel, Answer::ok, Answer::no, Answer::cancel, "WARNING: Delete? [Cancel]\n"},
        {Buttons::yes_no_cancel, Answer::cancel, {}, Answer::cancel, "WARNING: Delete? [Cancel]\n"},
    };
    for (const auto& c : cases) {
        std::ostringstream err;
        ConsoleMessages messages(err, c.forced);
        const Message question{.title = "WARNING ",
                               .text = "Delete?",
                               .buttons = c.buttons,
                               .default_button = c.by_default,
                               .kind = MessageKind::question};
        EXPECT_EQ(messages.ask(question), c.answer) << c.text;
        EXPECT_EQ(err.str(), c.text);
    }
}

}  // namespace
}  // namespace quom
