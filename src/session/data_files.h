// Files of measured data and of X-Y data in a session. Whatever fails is told, and leaves the session as it
// was; a file that is replaced stays whole until the new one is complete.
#pragma once
#include <string>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// Loads a data file (.BAQ) into the session, behind the points that are there when add is set. A file of a
// substance that is not in the database, or not the one in force, is loaded when the user wants it. False: no
// points were loaded; an empty path is nothing to load. A path without a folder is in the program folder.
bool LoadExpDataFile(Session& session, const std::string& path, bool add, Messages& messages);

// Writes all points as .BAQ, whose name is added where there is none, and makes this the file of the data.
// Asks before a file is replaced, so that the dialog need not. The file names the substance of the data: that
// of their file, else the one in force.
bool SaveExpData(Session& session, const std::string& path, Messages& messages);

// Saving T and the column of optFitFunction of the active points as .XY; the data count as unsaved as before.
bool SaveTYAsXY(const Session& session, const std::string& path, Messages& messages);

// X-Y data (.XY, .LRG).
bool LoadXYFile(Session& session, const std::string& path, Messages& messages);
bool SaveXYFile(Session& session, const std::string& path, Messages& messages);
// "  loaded: points.XY (12 data lines)"
std::string xy_loaded_text(const XYData& data);

// What the dialog of files shows of a data file. The session is only read.
struct ExpDataHead {
    std::string fault;  // no data file that can be shown: all else is empty
    std::string date, comment, CAS;
    std::string name;          // of the substance, as the file has it
    bool in_database = false;  // the substance is in the open database
    int ExpAnzahl = 0;
    std::string note;  // values that are missing or left over
    // Texts of the labels.
    std::string substance_text, data_text;
};
ExpDataHead ExpDataPreview(const std::string& path, const Session& session);

}  // namespace quom
