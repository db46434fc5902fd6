#include "diagrams/label_placing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>

#include "diagrams/label_occupancy.h"

namespace quom {
namespace {

constexpr double CandidateStep = 9.0;  // px along a line
constexpr double EndGap = 2.0;         // px between a text and the end of its piece
constexpr double LeastChord = 0.94;    // of the width: less is a kink or a bend
constexpr double MostSagitta = 3.0;    // px
constexpr double FrameGap = 4.0;       // px to the border, to lines that stay clear, to blocked boxes
constexpr double PairGap = 5.0;        // px between two labels
constexpr double PairReach = 14.0;     // px beyond the half widths: nearer labels of other families cost
constexpr double PairCost = 4.0;
constexpr double MostCost = 60.0;
constexpr double MiddleCost = 0.3;  // of a long text, per line away from the middle of the family
constexpr double BesideGap = 3.5;   // px between a line and the text beside it
constexpr double BelowCost = 0.5;   // of a text below its line instead of above
constexpr int Sweeps = 3;

struct Candidate {
    LabelBox box;
    bool beside = false;
    double cost = 0;
};

// Corners of a box, around.
struct Corners {
    PixelPoint at[4];
};
Corners corners_of(const LabelBox& box) {
    const double a = box.angle * std::numbers::pi / 180.0, ca = std::cos(a), sa = std::sin(a);
    const double w = 0.5 * box.width, h = 0.5 * box.height;
    const auto corner = [&](double x, double y) {
        return PixelPoint{box.centre.x + x * ca - y * sa, box.centre.y + x * sa + y * ca};
    };
    return {{corner(-w, -h), corner(w, -h), corner(w, h), corner(-w, h)}};
}

LabelBox grown(LabelBox box, double by) {
    box.width += 2.0 * by;
    box.height += 2.0 * by;
    return box;
}

double half_diagonal(const LabelBox& box) { return 0.5 * std::hypot(box.width, box.height); }

bool inside_area(const LabelInput& input, const LabelBox& box) {
    for (const PixelPoint& p : corners_of(box).at)
        if (p.x < 0.0 || p.y < 0.0 || p.x > input.width || p.y > input.height) return false;
    return true;
}

// A piece of a line without gaps, measured along.
struct Piece {
    std::vector<PixelPoint> at;
    std::vector<double> fraction, length;  // length from the start of the piece

    PixelPoint point(double s, double& f) const {
        const auto after = std::upper_bound(length.begin() + 1, length.end() - 1, s);
        const auto i = static_cast<std::size_t>(after - length.begin());
        const double step = length[i] - length[i - 1];
        const double t = step > 0.0 ? (s - length[i - 1]) / step : 0.0;
        const PixelPoint &a = at[i - 1], &b = at[i];
        const bool two = fraction[i - 1] >= 0.0 && fraction[i] >= 0.0;
        f = two ? fraction[i - 1] + t * (fraction[i] - fraction[i - 1]) : -1.0;
        return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    }
    double whole() const { return length.back(); }
};

std::vector<Piece> pieces_of(const LabelLine& line) {
    std::vector<Piece> pieces;
    Piece piece;
    const auto finish = [&] {
        if (piece.at.size() > 1) pieces.push_back(piece);
        piece = {};
    };
    for (std::size_t i = 0; i < line.points.size(); ++i) {
        const PixelPoint& p = line.points[i];
        if (std::isnan(p.x)) {
            finish();
            continue;
        }
        const double before = piece.at.empty() ? 0.0
                                               : piece.length.back() + std::hypot(p.x - piece.at.back().x,
                                                                                  p.y - piece.at.back().y);
        piece.at.push_back(p);
        piece.fraction.push_back(i < line.fraction.size() ? line.fraction[i] : -1.0);
        piece.length.push_back(before);
    }
    finish();
    return pieces;
}

// Farthest point of the piece from the chord between two of its lengths.
double sagitta(const Piece& piece, double s1, double s2, PixelPoint a, PixelPoint b) {
    const double dx = b.x - a.x, dy = b.y - a.y, chord = std::hypot(dx, dy);
    double most = 0.0;
    for (auto it = std::lower_bound(piece.length.begin(), piece.length.end(), s1);
         it != piece.length.end() && *it <= s2; ++it) {
        const PixelPoint& p = piece.at[static_cast<std::size_t>(it - piece.length.begin())];
        most = std::max(most, std::fabs((p.x - a.x) * dy - (p.y - a.y) * dx) / chord);
    }
    return most;
}

double place_cost(const LabelInput& input, const PlaceRule& rule, PixelPoint at, double fraction) {
    if (fraction >= 0.0 && rule.in_dome >= 0.0) return rule.in_dome;
    if (fraction < 0.0 && rule.outside >= 0.0) return rule.outside;
    const double place = rule.along == PlaceRule::Along::X   ? at.x / input.width
                         : rule.along == PlaceRule::Along::Y ? 1.0 - at.y / input.height
                                                             : fraction;
    return rule.weight * std::fabs(place - rule.target);
}

// Whether the box may stand there at all, and what it crosses.
bool fits(const LabelInput& input, const LabelOccupancy& occupancy, std::size_t line, const LabelBox& box,
          double& crossings) {
    if (!inside_area(input, grown(box, FrameGap))) return false;
    for (const LabelBox& blocked : input.blocked)
        if (boxes_meet(box, blocked, FrameGap)) return false;
    const LabelOccupancy::Under under = occupancy.under(box, line, FrameGap);
    crossings = under.crossings;
    return under.clear;
}

// All places of a text on a line, the cheapest first.
std::vector<Candidate> candidates_of(const LabelInput& input, const LabelOccupancy& occupancy,
                                     const std::vector<Piece>& pieces, std::size_t index, TextSize size,
                                     bool beside) {
    std::vector<Candidate> list;
    const LabelLine& line = input.lines[index];
    const double half = 0.5 * size.width;
    for (const Piece& piece : pieces) {
        const double first = half + EndGap, end = piece.whole() - half - EndGap;
        const int count = end < first ? 0 : 1 + static_cast<int>((end - first) / CandidateStep);
        for (int k = 0; k < count; ++k) {
            const double s = first + k * CandidateStep;
            double fraction = -1.0, unused = 0.0;
            const PixelPoint a = piece.point(s - half, unused), b = piece.point(s + half, unused);
            const PixelPoint at = piece.point(s, fraction);
            const double chord = std::hypot(b.x - a.x, b.y - a.y);
            if (chord < LeastChord * size.width) continue;
            const double bend = sagitta(piece, s - half, s + half, a, b);
            if (bend > MostSagitta) continue;
            double angle = std::atan2(b.y - a.y, b.x - a.x) * 180.0 / std::numbers::pi;
            if (angle > 90.0) angle -= 180.0;
            if (angle <= -90.0) angle += 180.0;
            const double tilt = std::fabs(angle) / 90.0;
            const double cost =
                2.0 * bend + 1.5 * tilt * tilt * tilt + place_cost(input, line.rule, at, fraction);
            const double off = beside ? 0.5 * size.height + BesideGap : 0.0;
            const double rad = angle * std::numbers::pi / 180.0;
            // Upwards from the text first.
            for (const double side : {-1.0, 1.0}) {
                if (!beside && side > 0.0) break;
                const LabelBox box{
                    .centre = {at.x - side * off * std::sin(rad), at.y + side * off * std::cos(rad)},
                    .width = size.width,
                    .height = size.height,
                    .angle = angle};
                double crossings = 0.0;
                if (!fits(input, occupancy, index, box, crossings)) continue;
                list.push_back({box, beside, cost + crossings + (beside && side > 0.0 ? BelowCost : 0.0)});
            }
        }
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const Candidate& x, const Candidate& y) { return x.cost < y.cost; });
    return list;
}

// The line of each family that takes the long text: where its cheapest place is cheapest.
struct LongChoice {
    double cost = std::numeric_limits<double>::infinity();
    std::size_t line = 0;
    std::vector<Candidate> candidates;
};

// What a label costs beside the labels that stand; infinite where they would touch.
double pair_cost(const Candidate& a, int family, const std::vector<const Candidate*>& placed,
                 const std::vector<LabelLine>& lines, std::size_t own) {
    double sum = 0.0;
    for (std::size_t i = 0; i < placed.size(); ++i) {
        if (!placed[i] || i == own) continue;
        const LabelBox &x = a.box, &y = placed[i]->box;
        const double d = std::hypot(x.centre.x - y.centre.x, x.centre.y - y.centre.y);
        if (d < half_diagonal(x) + half_diagonal(y) + PairGap && boxes_meet(x, y, PairGap))
            return std::numeric_limits<double>::infinity();
        const double reach = 0.5 * (x.width + y.width) + PairReach;
        if (lines[i].family != family && d < reach) sum += PairCost * (1.0 - d / reach);
    }
    return sum;
}

class Choice {
 public:
    Choice(const LabelInput& input, std::vector<std::vector<Candidate>> candidates)
        : input_(input),
          candidates_(std::move(candidates)),
          placed_(candidates_.size(), nullptr),
          cost_(candidates_.size(), 0.0) {}

    void run() {
        std::vector<std::size_t> order(candidates_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            // The one text of a triple line first: others find another place beside it.
            const bool first = input_.lines[a].keep_clear, second = input_.lines[b].keep_clear;
            if (first != second) return first;
            return candidates_[a].size() < candidates_[b].size();
        });
        for (const std::size_t i : order) place(i);
        for (int sweep = 0; sweep < Sweeps; ++sweep) {
            bool moved = false;
            for (const std::size_t i : order) {
                const Candidate* before = placed_[i];
                place(i);
                moved = moved || placed_[i] != before;
            }
            if (!moved) return;
        }
    }
    const Candidate* placed(std::size_t line) const { return placed_[line]; }
    double cost(std::size_t line) const { return cost_[line]; }

 private:
    // Lifts the label of a line and sets it where it is cheapest.
    void place(std::size_t i) {
        const Candidate* best = nullptr;
        double least = MostCost;
        for (const Candidate& candidate : candidates_[i]) {
            if (candidate.cost >= least) break;
            const double whole =
                candidate.cost + pair_cost(candidate, input_.lines[i].family, placed_, input_.lines, i);
            if (!(whole < least)) continue;
            least = whole;
            best = &candidate;
        }
        placed_[i] = best;
        cost_[i] = least;
    }

    const LabelInput& input_;
    std::vector<std::vector<Candidate>> candidates_;
    std::vector<const Candidate*> placed_;
    std::vector<double> cost_;
};

// Place of a line in its family and the number of its lines, for the distance from the middle.
double off_middle(const std::vector<LabelLine>& lines, std::size_t index) {
    int before = 0, all = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].family != lines[index].family || lines[i].text.empty()) continue;
        if (i < index) ++before;
        ++all;
    }
    return std::fabs(before - 0.5 * (all - 1));
}

// One line of each family takes the long text, where its cheapest place is cheapest.
std::vector<bool> take_long_texts(const LabelInput& input, const LabelOccupancy& occupancy,
                                  const std::vector<std::vector<Piece>>& pieces,
                                  std::vector<std::vector<Candidate>>& candidates) {
    std::vector<std::pair<int, LongChoice>> best;
    for (std::size_t i = 0; i < input.lines.size(); ++i) {
        const LabelLine& line = input.lines[i];
        if (line.text.empty() || line.long_text.empty()) continue;
        auto found =
            std::find_if(best.begin(), best.end(), [&](const auto& b) { return b.first == line.family; });
        if (found == best.end()) found = best.insert(best.end(), {line.family, {}});
        const double off = MiddleCost * off_middle(input.lines, i);
        // A longer text never has a cheaper place than the short one.
        if (!candidates[i].empty() && candidates[i].front().cost + off >= found->second.cost) continue;
        std::vector<Candidate> list =
            candidates_of(input, occupancy, pieces[i], i, input.measure(line.long_text), false);
        if (list.empty() || list.front().cost + off >= found->second.cost) continue;
        found->second = {list.front().cost + off, i, std::move(list)};
    }
    std::vector<bool> is_long(input.lines.size());
    for (auto& [family, choice] : best) {
        if (choice.candidates.empty()) continue;
        candidates[choice.line] = std::move(choice.candidates);
        is_long[choice.line] = true;
    }
    return is_long;
}

}  // namespace

bool boxes_meet(const LabelBox& a, const LabelBox& b, double gap) {
    const Corners ca = corners_of(grown(a, 0.5 * gap)), cb = corners_of(grown(b, 0.5 * gap));
    for (const double angle : {a.angle, a.angle + 90.0, b.angle, b.angle + 90.0}) {
        const double rad = angle * std::numbers::pi / 180.0, x = std::cos(rad), y = std::sin(rad);
        const auto extent = [&](const Corners& c, double& low, double& high) {
            low = HUGE_VAL;
            high = -HUGE_VAL;
            for (const PixelPoint& p : c.at) {
                low = std::min(low, p.x * x + p.y * y);
                high = std::max(high, p.x * x + p.y * y);
            }
        };
        double a1 = 0, a2 = 0, b1 = 0, b2 = 0;
        extent(ca, a1, a2);
        extent(cb, b1, b2);
        if (a2 < b1 || b2 < a1) return false;
    }
    return true;
}

bool box_meets_piece(const LabelBox& box, PixelPoint a, PixelPoint b) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (std::isnan(length)) return false;
    // A piece is a box without height.
    const LabelBox piece{.centre = {0.5 * (a.x + b.x), 0.5 * (a.y + b.y)},
                         .width = length,
                         .height = 0.0,
                         .angle = std::atan2(b.y - a.y, b.x - a.x) * 180.0 / std::numbers::pi};
    return boxes_meet(box, piece, 0.0);
}

double visible_length(const LabelLine& line) {
    double sum = 0.0;
    for (const Piece& piece : pieces_of(line)) sum += piece.whole();
    return sum;
}

std::vector<PlacedLineLabel> place_labels(const LabelInput& input) {
    const LabelOccupancy occupancy(input);
    const std::size_t n = input.lines.size();
    std::vector<std::vector<Candidate>> candidates(n);
    std::vector<std::vector<Piece>> pieces(n);
    for (std::size_t i = 0; i < n; ++i) {
        const LabelLine& line = input.lines[i];
        if (line.text.empty()) continue;
        pieces[i] = pieces_of(line);
        candidates[i] = candidates_of(input, occupancy, pieces[i], i, input.measure(line.text), line.beside);
    }
    const std::vector<bool> is_long = take_long_texts(input, occupancy, pieces, candidates);
    Choice choice(input, std::move(candidates));
    choice.run();
    std::vector<PlacedLineLabel> labels;
    for (std::size_t i = 0; i < n; ++i) {
        const Candidate* at = choice.placed(i);
        if (!at) continue;
        const LabelLine& line = input.lines[i];
        labels.push_back({i, is_long[i] ? line.long_text : line.text, at->box, at->beside, choice.cost(i)});
    }
    return labels;
}

std::optional<PixelPoint> place_box(const LabelInput& input, TextSize size) {
    constexpr double Lattice = 12.0, CornerWeight = 1.2;
    if (size.width > input.width || size.height > input.height) return {};
    const LabelOccupancy occupancy(input);
    const int columns = occupancy.columns(), rows = occupancy.rows();
    // Summed-area table: sum of all weights left of and above a cell.
    const auto index = [&](int column, int row) {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns + 1) +
               static_cast<std::size_t>(column);
    };
    std::vector<double> sum(index(0, rows + 1));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            sum[index(column + 1, row + 1)] = occupancy.weight(column, row) + sum[index(column, row + 1)] +
                                              sum[index(column + 1, row)] - sum[index(column, row)];
        }
    }
    const auto cell = [](double x) { return static_cast<int>(x / LabelOccupancy::Cell); };
    double least = std::numeric_limits<double>::infinity();
    PixelPoint best;
    for (double y = 0.0; y + size.height <= input.height; y += Lattice) {
        for (double x = 0.0; x + size.width <= input.width; x += Lattice) {
            const int x1 = cell(x), y1 = cell(y), x2 = std::min(columns, cell(x + size.width) + 1),
                      y2 = std::min(rows, cell(y + size.height) + 1);
            const double covered =
                sum[index(x2, y2)] - sum[index(x1, y2)] - sum[index(x2, y1)] + sum[index(x1, y1)];
            const double off =
                std::min(x, input.width - size.width - x) + std::min(y, input.height - size.height - y);
            const double cost = covered + CornerWeight * off / LabelOccupancy::Cell;
            if (!(cost < least)) continue;
            least = cost;
            best = {x, y};
        }
    }
    return best;
}

}  // namespace quom
