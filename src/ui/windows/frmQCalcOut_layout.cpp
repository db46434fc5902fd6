// The result window: its controls and where they stand.
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "forms/calculation_form.h"
#include "ui/look/look.h"
#include "ui/main/beside.h"
#include "ui/main/workbench.h"
#include "ui/widgets/footer_line.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/result_table.h"
#include "ui/widgets/result_table_view.h"
#include "ui/widgets/state_strip.h"
#include "ui/widgets/value_box.h"
#include "ui/widgets/view_label.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmPictureSuperCrit.h"
#include "ui/windows/frmQCalcOut.h"

namespace quom {

namespace {

constexpr QMargins PageMargins(0, 8, 0, 0);

template <class Button>
Button* captioned(const char* name, const char* caption, QWidget* parent) {
    const QString text = QString::fromUtf8(caption);
    return named(new Button(text, parent), name, text);
}

// A widget keeps its place while it is hidden, so that the rows below do not jump from result to result.
void keep_place(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

QFont value_font() {
    QFont font = fixed_font();
    font.setPointSizeF(font.pointSizeF() + 2);
    font.setBold(true);
    return font;
}

}  // namespace

frmQCalcOut::frmQCalcOut(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      strip(new StateStrip(this)),
      tabs(named(new QTabWidget(this), "tabs", QStringLiteral("Result"))),
      table(new ResultTable(bench, this)),
      footer(named(new FooterLine(this), "footer")),
      fraBatchVorgabe(named(new QGroupBox(this), "fraBatchVorgabe")),
      par1(named(new ValueBox(this), "par1", QStringLiteral("Specified value 1"))),
      par2(named(new ValueBox(this), "par2", QStringLiteral("Specified value 2"))),
      cmdRueck(captioned<QPushButton>("cmdRueck", "Set &backward", this)),
      cmdVor(captioned<QPushButton>("cmdVor", "Set &forward", this)),
      co1(named(new ViewLabel(this), "co1", QStringLiteral("State"))),
      Bezeichnung2(named(new ViewLabel(this), "Bezeichnung2")),
      lblGleich(named(new ViewLabel(this), "lblGleich")),
      txtco2(named(new ValueBox(this), "txtco2", QStringLiteral("Value"))),
      Liste(named(new ResultList(this), "Liste", QStringLiteral("Result list"))),
      chkUHS(captioned<QCheckBox>("chkUHS", "thermod. f&unctions h, s, g, u, a ...", this)),
      ResPlus{
          captioned<QCheckBox>("ResPlus_0", "diff. &Joule-Thomson, fugacity, mechanical coefficients", this),
          captioned<QCheckBox>("ResPlus_1", "deri&vatives with respect to T, p, v", this)},
      cmdInfoSuperCrit(captioned<QPushButton>("cmdInfoSuperCrit", "Info &Pict.", this)),
      cmdCEOSDiagnose(captioned<QPushButton>("cmdCEOSDiagnose", "Dia&gnosis of cubic EOS", this)),
      cmdIsoCalc(captioned<QPushButton>("cmdIsoCalc", "I&so Calculator", this)),
      cmdShowManuInput(captioned<QPushButton>("cmdShowManuInput", "&X-Y Editor", this)),
      cmdProtokoll(captioned<QPushButton>("cmdProtokoll", "Wri&te", this)),
      cmdOpenNew(captioned<QPushButton>("cmdOpenNew",
                                        "Close file / Open new file and paste record in clipboard", this)),
      lblProtText2(named(new ValueBox(this), "lblProtText2", QStringLiteral("File of the record"))),
      optResultPrint{captioned<QRadioButton>("optResultPrint_0", "&none", this),
                     captioned<QRadioButton>("optResultPrint_1", "&Printer", this),
                     captioned<QRadioButton>("optResultPrint_2", "Fil&e", this)},
      chkFuncPrint(captioned<QCheckBox>("chkFuncPrint", "with extended calculation", this)),
      cmdCalc_OK(captioned<QPushButton>("cmdCalc_OK", "C&lose", this)),
      bench_(bench),
      direct_(is_direct(bench.document(), bench.document().calc.CalcMode)),
      heads_(new ColumnHeads(Liste, this)) {
    setObjectName(QLatin1String(Name));
    lblLphase = named(heads_->L, "lblLphase");
    lblVphase = named(heads_->V, "lblVphase");
    txtco2->setFont(value_font());
    if (!direct_) {
        cmdCalc_OK->setText(QStringLiteral("Exit (+ data output)"));
        cmdCalc_OK->setAccessibleName(cmdCalc_OK->text());
    }
    build_layout();
    set_tab_order();
    connect_controls();
    load();
}

void frmQCalcOut::build_layout() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(strip);
    auto* given = new QHBoxLayout(fraBatchVorgabe);
    given->addWidget(par1);
    given->addWidget(par2);
    given->addStretch();
    given->addWidget(cmdRueck);
    given->addWidget(cmdVor);
    keep_place(fraBatchVorgabe);
    layout->addWidget(fraBatchVorgabe);

    tabs->addTab(make_list_page(), QStringLiteral("L&ist"));
    table->setContentsMargins(PageMargins);
    tabs->addTab(table, QStringLiteral("T&able"));
    tabs->addTab(make_record_page(), QStringLiteral("&Record, output"));
    tabs->setCornerWidget(table->corner());
    tabs->setDocumentMode(true);  // the pages stand on the ground of the window
    named(tabs->tabBar(), "tabBar", QStringLiteral("Parts of the result"));
    layout->addWidget(tabs, 1);
    layout->addWidget(footer);
    layout->addWidget(rule(this));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdCEOSDiagnose);
    buttons->addWidget(cmdIsoCalc);
    buttons->addWidget(cmdShowManuInput);
    buttons->addStretch();
    buttons->addWidget(cmdCalc_OK);
    layout->addLayout(buttons);
    cmdCalc_OK->setMinimumWidth(std::max(96, cmdCalc_OK->sizeHint().width()));
}

QWidget* frmQCalcOut::make_list_page() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(PageMargins);
    auto* state = new QHBoxLayout;
    state->addWidget(co1);
    state->addWidget(Bezeichnung2);
    state->addStretch();
    state->addWidget(cmdInfoSuperCrit);
    keep_place(cmdInfoSuperCrit);
    layout->addLayout(state);
    auto* value = new QHBoxLayout;
    value->addWidget(txtco2);
    value->addWidget(lblGleich);
    value->addStretch();
    value->addStrut(std::max(txtco2->sizeHint().height(), lblGleich->sizeHint().height()));
    layout->addLayout(value);

    auto* list = new QVBoxLayout;
    list->setSpacing(2);
    list->addWidget(heads_);
    list->addWidget(Liste, 1);
    layout->addLayout(list, 1);

    auto* extended = new QGridLayout;
    extended->setVerticalSpacing(4);
    extended->addWidget(chkUHS, 0, 0);
    extended->addWidget(ResPlus[0], 0, 1);
    extended->addWidget(ResPlus[1], 1, 0);
    extended->setColumnStretch(1, 1);
    layout->addLayout(extended);
    return page;
}

QWidget* frmQCalcOut::make_record_page() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(PageMargins);
    auto* record = new QGroupBox(QStringLiteral("Calculation record"));
    auto* rows = new QGridLayout(record);
    rows->addWidget(cmdProtokoll, 0, 0);
    rows->addWidget(lblProtText2, 0, 1);
    rows->addWidget(cmdOpenNew, 1, 0, 1, 2, Qt::AlignLeft);
    rows->setColumnStretch(1, 1);
    layout->addWidget(record);
    auto* output = new QGroupBox(QStringLiteral("Output"));
    auto* choice = new QGridLayout(output);
    for (int i = 0; i < 3; ++i) choice->addWidget(optResultPrint[i], 0, i);
    choice->addWidget(chkFuncPrint, 1, 0, 1, 3);
    choice->setColumnStretch(3, 1);
    layout->addWidget(output);
    layout->addStretch();

    optResultPrint[0]->setChecked(true);
    chkFuncPrint->setEnabled(false);
    for (QWidget* control :
         {static_cast<QWidget*>(cmdProtokoll), static_cast<QWidget*>(cmdOpenNew),
          static_cast<QWidget*>(optResultPrint[1]), static_cast<QWidget*>(optResultPrint[2])})
        not_yet_available(control);
    return page;
}

// As they are read: what it is, from what, the result, what it rests on, what can be done.
void frmQCalcOut::set_tab_order() {
    std::vector<QWidget*> order = {strip,         strip->cmdCalculateAgain, par1, par2, cmdRueck, cmdVor,
                                   tabs->tabBar()};
    for (QWidget* control : table->corner()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (control->focusPolicy() != Qt::NoFocus) order.push_back(control);
    order.insert(order.end(), {table->view(), cmdInfoSuperCrit, txtco2, Liste, chkUHS, ResPlus[0], ResPlus[1],
                               cmdProtokoll, lblProtText2, cmdOpenNew, optResultPrint[0], optResultPrint[1],
                               optResultPrint[2], chkFuncPrint, footer, cmdCEOSDiagnose, cmdIsoCalc,
                               cmdShowManuInput, cmdCalc_OK});
    for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace quom
