#include "ui/windows/frmBParInput.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "forms/virial_form.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"

namespace quom {

frmBParInput::frmBParInput(const EosInput& constants, QWidget* parent)
    : QDialog(parent),
      cmdParameter_OK(named(new QPushButton(QStringLiteral("&Parameters OK"), this), "cmdParameter_OK",
                            QStringLiteral("Parameters OK"))),
      cancel(
          named(new QPushButton(QStringLiteral("Cancel <Esc>"), this), "cancel", QStringLiteral("Cancel"))),
      constants_(constants) {
    setObjectName(QStringLiteral("frmBParInput"));
    setWindowTitle(QString::fromUtf8(virial_caption.data(), static_cast<int>(virial_caption.size())));
    const VirialInput values = virial_input(constants);
    const double shown[] = {values.b0, values.b1, values.b2};
    const char* const labels[] = {"b0 = ", "b1 = ", "b2 = "};
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        head_label(QString::fromUtf8(virial_formula.data(), static_cast<int>(virial_formula.size())), this));
    auto* form = new QGridLayout;
    layout->addLayout(form);
    for (int i = 0; i < 3; ++i) {
        par[i] = named(new NumberBox(16, this), qPrintable(QStringLiteral("par_%1").arg(i)));
        par[i]->set_value(shown[i]);
        add_form_row(form, 2 * i, new TrimmedLabel(QLatin1String(labels[i]), this), par[i]);
        add_refusal_line(form, 2 * i + 1, par[i]);
    }
    par[2]->press_on_enter(cmdParameter_OK);
    layout->addWidget(cmdParameter_OK);
    layout->addWidget(rule(this));
    layout->addWidget(cancel);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    cmdParameter_OK->setDefault(true);
    connect(cmdParameter_OK, &QPushButton::clicked, this, [this] { take(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    par[0]->setFocus();
    par[0]->selectAll();
}

void frmBParInput::take() {
    if (const auto refusal =
            take_virial_input(constants_, {par[0]->typed(), par[1]->typed(), par[2]->typed()}))
        return par[refusal->box]->refuse(refusal->rule);
    accept();
}

}  // namespace quom
