#include "diagrams/unload_question.h"

namespace quom {

Message unload_question() {
    return {.title = "WARNING",
            .text =
                "The units of the diagram axes do not fit together.\n\n"
                "Delete the existing diagram?",
            .buttons = Buttons::yes_no,
            .default_button = Answer::yes,
            .kind = MessageKind::warning};
}

}  // namespace quom
