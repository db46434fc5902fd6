#include "substance/starter_marks.h"

#include <algorithm>
#include <map>
#include <span>
#include <utility>

#include "base/csv_rows.h"
#include "substance/record.h"
#include "substance/set_marks.h"

namespace quom {
namespace {

struct Source {
    std::string mark, text;
};

class Builder {
 public:
    explicit Builder(std::string_view database) {
        const RecordLayout& layout = *record_layout(7);
        for (std::size_t at = layout.length; at + layout.length <= database.size(); at += layout.length) {
            SubstanceConstants constants =
                unpack_record(database.substr(at, layout.length), layout, true).constants;
            std::string cas = constants.StoffCAS;
            substances_.emplace(std::move(cas), std::move(constants));
        }
    }

    StarterMarks build(const SourceTables& tables) {
        read_list(csv_rows(tables.source_list));
        const std::vector<CsvRow> rows = csv_rows(tables.sources);
        if (rows.empty() || rows.front().fields.front() != "cas")
            faults_.emplace_back("sources: the header does not begin with \"cas\"");
        else
            for (const CsvRow& row : std::span(rows).subspan(1)) add_substance(row, rows.front().fields);
        if (!faults_.empty()) return {.text = {}, .faults = std::move(faults_)};
        return {.text = marks_text(marks_), .faults = {}};
    }

 private:
    void read_list(const std::vector<CsvRow>& rows) {
        if (rows.empty() || rows.front().fields != std::vector<std::string>{"no", "mark", "source"}) {
            faults_.emplace_back("source_list: the header is not no,mark,source");
            return;
        }
        for (const CsvRow& row : std::span(rows).subspan(1))
            if (row.fields.size() != 3 ||
                !list_.emplace(row.fields[0], Source{row.fields[1], row.fields[2]}).second)
                faults_.push_back("source_list, line " + std::to_string(row.line) +
                                  ": three fields with a number of its own are needed");
    }

    void add_substance(const CsvRow& row, const std::vector<std::string>& columns) {
        const std::string place =
            "sources, line " + std::to_string(row.line) + " (" + row.fields.front() + "): ";
        const auto substance = substances_.find(row.fields.front());
        if (substance == substances_.end())
            faults_.push_back(place + "the table of substances lacks it");
        else if (row.fields.size() != columns.size())
            faults_.push_back(place + "has " + std::to_string(row.fields.size()) + " fields, the header " +
                              std::to_string(columns.size()));
        else
            for (std::size_t k = 1; k < columns.size(); ++k)
                if (!row.fields[k].empty())
                    add_set(place + columns[k] + " ", substance->second, columns[k], row.fields[k]);
    }

    void add_set(const std::string& place, const SubstanceConstants& substance, const std::string& column,
                 const std::string& entry) {
        const std::size_t colon = entry.find(':');
        const auto source = list_.find(entry.substr(0, colon));
        if (source == list_.end()) {
            faults_.push_back(place + entry + ": the list of sources has no such number");
            return;
        }
        if (source->second.mark.empty()) return;
        const MarkedSet* const set = marked_set(column);
        const std::optional<MarkKind> kind = mark_kind(source->second.mark);
        if (set == nullptr || !kind || !has_figures(substance, *set)) {
            faults_.push_back(place + "cannot bear the mark \"" + source->second.mark + "\"");
            return;
        }
        std::string text = source->second.text;
        if (colon != std::string::npos) text += " (max " + entry.substr(colon + 1) + " %)";
        marks_.push_back({substance.StoffCAS, set, *kind, figures_of(substance, *set), std::move(text)});
    }

    // An empty record has the checksum of zeros.
    static bool has_figures(const SubstanceConstants& substance, const MarkedSet& set) {
        return figures_of(substance, set) != figures_of({}, set);
    }

    std::map<std::string, SubstanceConstants, std::less<>> substances_;
    std::map<std::string, Source, std::less<>> list_;
    std::vector<MarkRow> marks_;
    std::vector<std::string> faults_;
};

}  // namespace

StarterMarks build_starter_marks(const SourceTables& tables, std::string_view database) {
    return Builder(database).build(tables);
}

}  // namespace quom
