// Text for metafiles of 8-bit characters.
#pragma once
#include <QString>
#include <string>
#include <vector>

namespace quom {

enum class WmfLetters {
    western,  // Windows-1252
    symbol,   // the font Symbol: Greek and mathematical signs
    raised,   // small Windows-1252 above and below the line
    lowered,
    outline,  // none of these: drawn as an area
};

struct WmfRun {
    WmfLetters letters = WmfLetters::western;
    int first = 0, count = 0;  // UTF-16 units of the text
    std::string bytes;         // one a unit; empty for an outline
};

// The text in runs of one kind. Minus signs and dashes become hyphens, which every reader shows, narrow
// blanks become blanks.
std::vector<WmfRun> wmf_runs(const QString& text);

}  // namespace quom
