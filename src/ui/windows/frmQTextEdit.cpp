#include "ui/windows/frmQTextEdit.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "base/files.h"
#include "ui/main/mdiQUOM.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/result_list.h"

namespace quom {

namespace {

constexpr int MostHeight = 633;  // of the text box [px]

int line_count(const std::string& text) { return static_cast<int>(split_lines(text).size()); }

}  // namespace

frmQTextEdit::frmQTextEdit(mdiQUOM& frame)
    : head(new ResultList(this)),
      text(new ResultList(this)),
      cmdClose(new QPushButton(QStringLiteral("Close <Esc>"), this)) {
    setObjectName(QLatin1String(Name));
    named(head, "head", QStringLiteral("Heading"));
    named(text, "text", QStringLiteral("Text"));
    named(cmdClose, "cmdClose", QStringLiteral("Close"));
    connect(cmdClose, &QPushButton::clicked, this, [&frame] { frame.unload(Name); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(head);
    layout->addWidget(text, 1);
    layout->addLayout(buttons);
}

void frmQTextEdit::show_texts(const std::string& head_text, const std::string& main_text) {
    head->show_text(head_text);
    head->set_lines(line_count(head_text));
    head->setVisible(!head_text.empty());
    text->show_text(main_text);
}

frmQTextEdit* frmQTextEdit::open(mdiQUOM& frame, const QString& caption, const std::string& head,
                                 const std::string& text) {
    frame.unload(Name);
    auto* window = new frmQTextEdit(frame);
    window->setWindowTitle(caption);
    window->head->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    window->show_texts(head, text);
    const int most_lines = MostHeight / window->text->fontMetrics().lineSpacing();
    window->text->set_lines(std::clamp(line_count(text) + 1, 4, most_lines));
    frame.open_child(window);
    window->text->setFocus();
    return window;
}

}  // namespace quom
