// What a session keeps of its diagrams beside the document: no step of undo takes it back, and no project
// holds it.
#pragma once
#include <optional>
#include <string>

#include "diagrams/graph_document.h"

namespace quom {

struct Document;

struct DiagramSession {
    DiagramState state;                  // diagram in force, ranges, parameters that are offered first
    std::optional<GraphDocument> sheet;  // none: there is no diagram
    Units units;                         // of the sheet; what is added to it has them too
    IsochoreEnd isochore;                // where the last isochore of the sheet met the phase boundary
    bool TellIsochores = true;           // one-time notes that were not yet shown
    bool TellLoading = true;
    std::string Folder;    // last folder of diagram files
    std::string LastFile;  // name of the file that the sheet was loaded from; empty: from none
    bool operator==(const DiagramSession&) const = default;
};

// What is left of it after a change of the document. Another substance takes the sheet and begins anew;
// other units take the sheet when ResetOnClose is set, else it stays in its own; models and reference state
// leave it as it is.
void keep_diagram(DiagramSession& diagram, const Document& before, const Document& after);
// The sheet goes; kind, ranges and parameters stay.
void unload_sheet(DiagramSession& diagram);

}  // namespace quom
