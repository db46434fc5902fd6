#include "ui/charts/wmf_text.h"

#include <string_view>

#include "base/code_page.h"

namespace quom {

namespace {

constexpr int longest_run = 1000;

struct Letter {
    WmfLetters letters;
    char byte;
};

char low_byte(std::size_t code) { return static_cast<char>(static_cast<unsigned char>(code)); }

// Stretches of the font Symbol (Adobe's encoding) from a first code on.
struct SymbolCodes {
    unsigned char first;
    std::u16string_view signs;
};
constexpr SymbolCodes symbol_codes[] = {
    {0x41, u"ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ"},
    {0x61, u"αβχδεφγηιϕκλμνοπθρστυϖωξψζ"},
    {0xA2, u"′≤"},
    {0xA5, u"∞"},
    {0xAB, u"↔←↑→↓"},
    {0xB2, u"″≥"},
    {0xB5, u"∝∂"},
    {0xB9, u"≠≡≈"},
    {0xD1, u"∇"},
    {0xD5, u"∏√⋅"},
    {0xE5, u"∑"},
    {0xF2, u"∫"},
};

// Windows-1252 characters that stand for others.
struct StandIn {
    WmfLetters letters;
    std::u16string_view signs;
    std::string_view bytes;
};
constexpr StandIn stand_ins[] = {
    {WmfLetters::western, u"\u2212\u2013\u2014\u2009\u202F\u2007\u2002", "---    "},
    {WmfLetters::raised, u"⁰⁴⁵⁶⁷⁸⁹⁺⁻⁽⁾ⁿ", "0456789+-()n"},
    {WmfLetters::lowered, u"₀₁₂₃₄₅₆₇₈₉₊₋₍₎", "0123456789+-()"},
};

Letter letter_of(char16_t c) {
    for (const StandIn& stand_in : stand_ins)
        if (const std::size_t at = stand_in.signs.find(c); at != std::u16string_view::npos)
            return {stand_in.letters, stand_in.bytes[at]};
    if (c >= 0x20 && c < 0x7F) return {WmfLetters::western, low_byte(c)};
    for (const SymbolCodes& codes : symbol_codes)
        if (const std::size_t at = codes.signs.find(c); at != std::u16string_view::npos)
            return {WmfLetters::symbol, low_byte(codes.first + at)};
    const Encoded western = cp1252_from_utf8(QString(QChar(c)).toStdString());
    if (!QChar::isSurrogate(c) && western.replaced == 0 && western.bytes.size() == 1)
        return {WmfLetters::western, western.bytes.front()};
    return {WmfLetters::outline, 0};
}

}  // namespace

std::vector<WmfRun> wmf_runs(const QString& text) {
    std::vector<WmfRun> runs;
    for (int i = 0; i < text.size(); ++i) {
        Letter letter = letter_of(text[i].unicode());
        const bool blank = letter.letters == WmfLetters::western && letter.byte == ' ';
        const bool joins = !runs.empty() && runs.back().count < longest_run;
        // A blank has no look of its own, and what belongs together is drawn together.
        const bool same = joins && (runs.back().letters == letter.letters ||
                                    (blank && runs.back().letters == WmfLetters::symbol));
        if (!same) runs.push_back({letter.letters, i, 0, {}});
        ++runs.back().count;
        if (letter.letters != WmfLetters::outline) runs.back().bytes.push_back(letter.byte);
    }
    return runs;
}

}  // namespace quom
