// A user for tests: answers from a queue, or the default when it is empty, and keeps what was asked.
#pragma once
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "base/messages.h"

namespace quom {

class QueuedMessages : public Messages {
 public:
    std::deque<Answer> answers;
    std::vector<Message> asked;
    Answer ask(const Message& message) override {
        asked.push_back(message);
        if (answers.empty()) return message.default_button;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    // Titles and texts asked since the last call.
    std::vector<std::pair<std::string, std::string>> take() {
        std::vector<std::pair<std::string, std::string>> texts;
        for (const Message& m : asked) texts.emplace_back(m.title, m.text);
        asked.clear();
        return texts;
    }
};

}  // namespace quom
