#include "ui/widgets/table_copy.h"

#include <QAbstractItemModel>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <algorithm>

#include "base/files.h"
#include "base/number_text.h"
#include "ui/main/beside.h"
#include "ui/main/mdiQUOM.h"
#include "ui/widgets/dialogs.h"

namespace quom {

namespace {

const QString FolderKey = QStringLiteral("export/folder");

std::string bytes_for(const ExportTable& table, const QString& suffix, const Options& options) {
    if (suffix == QLatin1String("html") || suffix == QLatin1String("htm")) return to_html(table);
    const char decimal = options.DezimalKomma ? ',' : '.';
    if (suffix == QLatin1String("tsv") || suffix == QLatin1String("txt")) return to_tsv(table, decimal);
    return to_csv(table, options.SepCSV, decimal);
}

// "p", "kPa" of "p / kPa", "p/ kPa", and of a head with its unit on a second line.
std::pair<std::string, std::string> head_parts(const QString& head) {
    // The first of both parts the head; a second one belongs to the unit, "kg/m^3".
    const auto parts_at = [](QChar c) { return c == QLatin1Char('/') || c == QLatin1Char('\n'); };
    const auto at = std::find_if(head.begin(), head.end(), parts_at);
    if (at == head.begin() || at == head.end()) return {head.simplified().toStdString(), {}};
    const qsizetype place = at - head.begin();
    return {head.left(place).simplified().toStdString(), head.mid(place + 1).simplified().toStdString()};
}

}  // namespace

void copy_table(const ExportTable& table, const std::string& csv) {
    auto* data = new QMimeData;
    data->setText(QString::fromStdString(to_tsv(table)));
    data->setHtml(QString::fromStdString(to_html(table)));
    if (!csv.empty()) data->setData(QStringLiteral("text/csv"), QByteArray::fromStdString(csv));
    QGuiApplication::clipboard()->setMimeData(data);
}

bool save_table(QWidget* widget, const ExportTable& table, const QString& name) {
    mdiQUOM* frame = frame_of(widget);
    if (!frame) return false;
    Workbench& bench = frame->bench();
    const QString folder = bench.memory.value(FolderKey).toString();
    const auto path = frame->dialogs().save_file(
        widget, {.title = QStringLiteral("Save the table as ..."),
                 .start = QDir(folder).filePath(name + QStringLiteral(".csv")),
                 .filter = QStringLiteral("CSV (*.csv);;Text with tabs (*.tsv *.txt);;HTML page (*.html)"),
                 .suffix = QStringLiteral("csv")});
    if (!path) return false;
    const QFileInfo file(*path);
    const std::string bytes = bytes_for(table, file.suffix().toLower(), bench.document().options);
    const std::string fault = write_file_atomic(path->toStdString(), bytes);
    if (!fault.empty()) {
        bench.tell({.title = "Execution not possible", .text = fault, .kind = MessageKind::warning});
        return false;
    }
    bench.memory.set(FolderKey, file.absolutePath());
    return true;
}

ExportTable table_of(const QAbstractItemModel& model) {
    ExportTable table{.title = {}, .heads = {}};
    bool any_unit = false;
    for (int c = 0; c < model.columnCount(); ++c) {
        auto [name, unit] = head_parts(model.headerData(c, Qt::Horizontal).toString());
        any_unit = any_unit || !unit.empty();
        table.heads.push_back(std::move(name));
        table.units.push_back(std::move(unit));
    }
    if (!any_unit) table.units.clear();
    for (int r = 0; r < model.rowCount(); ++r) {
        std::vector<ExportCell>& cells = table.rows.emplace_back();
        for (int c = 0; c < model.columnCount(); ++c) {
            const QModelIndex at = model.index(r, c);
            const bool checked = at.data(Qt::CheckStateRole).toInt() == Qt::Checked;
            QString shown = at.data().toString();
            if (shown.isEmpty() && checked) shown = QStringLiteral("x");
            std::string text = shown.toStdString();
            const bool number = read_number(text).has_value();
            cells.emplace_back(std::move(text), number);
        }
    }
    return table;
}

}  // namespace quom
