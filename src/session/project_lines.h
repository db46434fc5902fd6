// The lines of a project file (.QC6): plain values, their text, and back.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/code_page.h"

namespace quom {

// What a project file holds, in the order of its lines. Numbers of models, modes and forms are those of the
// file.
struct ProjectFile {
    std::string date;           // of saving, for display
    std::string comment;        // "<>" stands for none
    std::string database_path;  // its last character is the kind
    std::string exp_file;       // name of the experimental data file without folder, empty: none
    int ExpAnzahl = 0;          // number of its points
    std::string CAS;            // of the substance
    double TcrStart = 0, pcrStart = 0, vcrStart = 0;  // [K], [kPa], [m^3/kmol]; 0 unless ParSpeichern
    double uFactor = 1;                               // superseded by EnergyMode
    int VolumeMode = 0, EnergyMode = 0;
    bool chkCurveTpRestricted = true;
    int Dens = 500;
    char SepCSV = ';';
    int EVPKode = 0, EOSKode = 0, cpKode = 0, HLVKode = 0;
    float nWat = 0.38f;
    bool Konzept = true;
    int RefKode = 1;
    double hOffset = 0, sOffset = 0;       // [kJ/kmol], [kJ/(kmol K)]
    float TRef0 = 298.15f, pRef0 = 0;      // [K], [kPa]
    double TEnv = 298.15, pEnv = 101.325;  // [K], [kPa]
    int ProcessForm = 0;
    int optFitFunction = 1;
    bool ParSpeichern = false;
    bool operator==(const ProjectFile&) const = default;

    // 6 or 7 from the last character of the path; any other digit stands as it is, no digit is 0.
    int database_kind() const;
};

// A value that cannot be, and what is taken in its place.
struct ReplacedValue {
    int line = 0;       // of the file
    std::string name;   // "Dens"
    std::string found;  // as the file has it
    std::string taken;
    bool operator==(const ReplacedValue&) const = default;
};
// "line 14 (Dens): 0 is not possible, 500 is taken"
std::string replaced_text(const ReplacedValue& value);

struct ReadProject {
    std::optional<ProjectFile> project;
    std::string fault;  // with the name of the file and the line
    std::vector<ReplacedValue> replaced;
};
// Reads the bytes of a project file. Lines end with CR LF or LF; the reserved values at the end may be
// missing. Values out of their range are replaced and listed; text where a number belongs, an end too early
// and values too many are faults. name: of the file, for the fault.
ReadProject read_project(std::string_view bytes, std::string_view name);

// The first six lines alone, for a look at the file: all values behind them are as by default.
ReadProject read_project_head(std::string_view bytes, std::string_view name);

// The file in Windows-1252 with CR LF. Line ends and control characters inside texts become blanks; the
// number of characters outside the code page is told.
Encoded project_bytes(const ProjectFile& project);

// The named values behind line 6 as the file has them, for a list: line, name, text.
struct ProjectValue {
    int line = 0;
    std::string_view name;
    std::string text;
};
std::vector<ProjectValue> project_values(const ProjectFile& project);

}  // namespace quom
