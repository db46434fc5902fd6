// Sessions over the starter database, for tests of session, forms, console and windows.
#pragma once
#include <stdexcept>
#include <string>
#include <string_view>

#include "forms/model_form.h"
#include "session/start_up.h"
#include "substance/database.h"
#include "support/starter.h"
#include "support/test_paths.h"

namespace quom::test {

// A session with the starter database open and no substance chosen.
inline Session starter_session() {
    Session session;
    session.ProgramPath = test::starter_data();
    if (LoadDatabase(session, 7, "quom.q07").err != 0)
        throw std::runtime_error("the starter database is missing");
    return session;
}

// Makes a substance the one in force and confirms its models: the EOS asked for, the others as the model
// window proposes them.
inline void select_substance(Session& session, std::string_view cas, Eos code) {
    const int index = FindCAS(session.database, cas);
    if (index == 0) throw std::runtime_error("not in the starter database: " + std::string(cas));
    SilentMessages nobody;
    confirm_substance(session, index, nobody);
    ModelForm form = open_model_form(session.document);
    EOSKombi_Click(form, code);
    if (confirm_models(session, form, nobody).err != 0)
        throw std::runtime_error("no parameters for the equation of " + std::string(cas));
}

inline Session substance_session(std::string_view cas, Eos code) {
    Session session = starter_session();
    select_substance(session, cas, code);
    return session;
}

// Commits what a change makes of the document.
template <class Change>
Changes change(Session& session, Change make) {
    Document document = session.document;
    make(document);
    return commit(session, std::move(document));
}

}  // namespace quom::test
