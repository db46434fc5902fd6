#include "session/start_up.h"

#include <utility>

#include "base/files.h"
#include "session/data_diagnosis.h"
#include "substance/database.h"

namespace quom {
namespace {

// What belongs to the substance before: constants typed for its equations, the reference point of its liquid.
void forget_substance(Document& document) {
    document.substance = {};
    document.eos_input = {};
    document.calc.setup.benson = {};
}

Document without_substance(Document document) {
    forget_substance(document);
    document.calc.CalcMode = Mode::none;
    document.models.HLVKode = Hlv::none;
    document.models.Konzept = true;
    const ReferenceState defaults;
    document.reference.TRef0 = defaults.TRef0;
    document.reference.pRef0 = defaults.pRef0;
    document.reference.TEnv = defaults.TEnv;
    document.reference.pEnv = defaults.pEnv;
    return document;
}

// Outcomes go even where the next substance is the same one: nothing of a session before is shown again.
void take_over(Session& session, Document document) {
    commit(session, std::move(document));
    session.outcomes.clear();
    session.shell.ModelsConfirmed = false;
    session.shell.ModelStatus.clear();
}

Message new_substance_question() {
    return {.title = "exper. data",
            .text = "New substance was chosen.\nDelete loaded exper. data now?",
            .buttons = Buttons::yes_no,
            .default_button = Answer::yes,
            .kind = MessageKind::question};
}

}  // namespace

void start_session(Session& session, std::string ProgramPath, bool DezimalKomma) {
    session = {};
    session.document.options.DezimalKomma = DezimalKomma;
    session.ProgramPath = std::move(ProgramPath);
    session.shell.ProjectFolder = session.ProgramPath;
    session.shell.ExpFolder = session.ProgramPath;
    ResetSession(session);
}

LoadResult LoadDatabase(Session& session, int kind, std::string_view path) {
    if (!FileExists(path, session.ProgramPath))
        return {.err = -1, .fault = "There is no database \"" + std::string(path) + "\"."};
    OpenedDatabase opened =
        open_database(kind, resolve_path(path, session.ProgramPath), session.document.options.Englisch);
    if (opened.err != 0) return {.err = opened.err, .fault = std::move(opened.fault)};

    DatabaseFile& file = session.database;
    (kind == 7 ? opened.file.PathQ06 : opened.file.PathQ07) = kind == 7 ? file.PathQ06 : file.PathQ07;
    file = std::move(opened.file);
    session.names.reset();
    session.StoffIndex = 0;
    Document document = session.document;
    forget_substance(document);
    document.DatabaseKind = file.DatabaseKind;
    document.DatabasePath = file.path;
    take_over(session, std::move(document));
    return {};
}

std::int16_t SelectSubstance(Session& session, int index) {
    if (index == 0) return 0;
    UnpackedRecord unpacked = unpack_substance(session.database, index, session.document.options.Englisch);
    Document document = session.document;
    forget_substance(document);
    document.substance.StoffIndexAktiv = unpacked.readable ? index : 0;
    document.substance.constants = std::move(unpacked.constants);
    session.StoffIndex = document.substance.StoffIndexAktiv;
    take_over(session, std::move(document));
    return unpacked.err;
}

void ResetSession(Session& session) { take_over(session, without_substance(session.document)); }

void check_reference(Document& document, Messages& messages) {
    const std::string missing(
        missing_formation_data(document.substance.constants, document.reference.RefKode));
    if (missing.empty()) return;
    document.reference.RefKode = reference_free;
    messages.ask({.title = "WARNING",
                  .text = "The record of " + document.substance.constants.StoffName + " has no " + missing +
                          ".\nThe free input of the reference state is in force now.",
                  .kind = MessageKind::warning});
}

std::int16_t confirm_substance(Session& session, int index, Messages& messages) {
    if (index == 0) return 0;
    ResetSession(session);
    const bool has_data = data_point_count(session.document.exp) > 0;
    const bool delete_data = has_data && messages.ask(new_substance_question()) == Answer::yes;
    const std::int16_t err = SelectSubstance(session, index);

    Document document = session.document;
    if (delete_data) document.exp = {};
    check_reference(document, messages);
    const SubstanceConstants& c = document.substance.constants;
    document.units.TcrStart = c.Tcr;
    document.units.pcrStart = c.pcr;
    document.units.vcrStart = 0.0;  // follows from the equation of state with the OK of the models
    commit(session, std::move(document));
    return err;
}

}  // namespace quom
