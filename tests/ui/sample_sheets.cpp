#include "ui/sample_sheets.h"

#include <cmath>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "diagrams/draw_curve.h"
#include "diagrams/graph_view.h"
#include "diagrams/marks.h"
#include "support/starter.h"

namespace quom::test {
namespace {

// A sheet of one diagram, and what a user does to it.
class SheetMaker {
 public:
    SheetMaker(std::string_view cas, Kind kind, const Units& units = {})
        : fluid(starter_fluid(cas, Eos::peng_robinson)) {
        input.kind = kind;
        input.units = units;
        input.options.Dens = 300;
        sheet = new_sheet(DiagramSetup(*fluid, units, {}, kind, false, false).state.rec);
    }
    void range(const CurveRange& shown) { sheet.diagram.range = sheet.diagram.initial = shown; }
    void isotherms(std::initializer_list<double> list) {
        for (const double T : list) {
            input.T = T;
            cmdDraw(sheet, *fluid, input);
        }
    }
    void isobars(std::initializer_list<double> list) {
        for (const double p : list) {
            input.p = p;
            cmdDraw(sheet, *fluid, input);
        }
    }
    void isochores(std::initializer_list<double> list) {
        for (const double v : list) {
            input.v = v;
            cmdDraw(sheet, *fluid, input);
        }
    }
    void curve() { cmdDraw(sheet, *fluid, input); }
    void overlay(Overlay which) {
        for (const CurveInput& one : plan_overlay(*fluid, input, which).curves) cmdDraw(sheet, *fluid, one);
    }
    void critical_points() {
        mark_critical_point(sheet, *fluid, input.units, false);
        mark_critical_point(sheet, *fluid, input.units, true);
    }
    void measured(int count, double x0, double y0, double dx, double dy) {
        std::vector<SheetPoint> points;
        for (int i = 0; i < count; ++i)
            points.push_back({static_cast<float>(x0 + i * dx), static_cast<float>(y0 + i * dy)});
        cmdExternPoints(sheet, points, PointSource::data_editor);
    }
    void legend(LegendPlace place = LegendPlace::top_right) {
        show_legend(sheet);
        sheet.legend.place = place;
    }

    std::shared_ptr<const Fluid> fluid;
    GraphDocument sheet;
    CurveInput input;
};

GraphDocument p_v_family() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0, .YMin = 0, .XMax = 1.2F, .YMax = 7000});
    maker.isotherms({290, 310, 330, 350, 369.83, 380, 400, 430, 470});
    maker.overlay(Overlay::coexistence);
    for (const double T : {310.0, 350.0}) {
        maker.input.T = T;
        maker.overlay(Overlay::tie_line);
    }
    mark_p(maker.sheet, *maker.fluid, maker.input.units);
    maker.critical_points();
    return maker.sheet;
}

GraphDocument p_v_loops() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0, .YMin = -1000, .XMax = 0.8F, .YMax = 6000});
    for (const double T : {310.0, 330.0, 350.0}) {
        maker.isotherms({T});
        maker.overlay(Overlay::loop);
    }
    maker.overlay(Overlay::coexistence);
    mark_v(maker.sheet, *maker.fluid, maker.input.units);
    mark_b_line(maker.sheet, *maker.fluid, maker.input.units);
    maker.legend();
    return maker.sheet;
}

GraphDocument T_v_family() {
    SheetMaker maker(water, Kind::T_v);
    maker.isobars({1000, 5000, 10000, 15000, 22064, 30000, 40000});
    maker.overlay(Overlay::coexistence);
    mark_T(maker.sheet, *maker.fluid, maker.input.units, maker.input.options);
    return maker.sheet;
}

GraphDocument p_T_inversion() {
    SheetMaker maker(nitrogen, Kind::p_T);
    maker.range({.XMin = 60, .YMin = 0, .XMax = 800, .YMax = 50000});
    maker.isochores({0.04, 0.05, 0.07, 0.1, 0.2, 0.5});
    maker.overlay(Overlay::coexistence);
    maker.overlay(Overlay::inversion);
    maker.critical_points();
    maker.legend();
    return maker.sheet;
}

GraphDocument lnp_over_inverse_T() {
    SheetMaker maker(propane, Kind::sat_lnp_invT);
    maker.curve();
    mark_T(maker.sheet, *maker.fluid, maker.input.units, maker.input.options);
    return maker.sheet;
}

GraphDocument h_T_coexistence() {
    SheetMaker maker(propane, Kind::h_T);
    maker.isobars({100, 500, 1000, 2000, 4247, 8000});
    maker.overlay(Overlay::coexistence);
    maker.measured(8, 280, -18000, 10, 900);
    maker.legend(LegendPlace::bottom_right);
    return maker.sheet;
}

GraphDocument h_s_chart() {
    SheetMaker maker(water, Kind::h_s_isobar, {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass});
    maker.input.process.ScanT = true;
    maker.input.process.From = 290;
    maker.input.process.To = 850;
    maker.isobars({10, 100, 1000, 5000, 10000, 20000, 40000});
    maker.input.process = {};
    maker.overlay(Overlay::coexistence);
    return maker.sheet;
}

GraphDocument database_function(Kind kind) {
    SheetMaker maker(propane, kind);
    maker.curve();
    return maker.sheet;
}

GraphDocument reduced_units() {
    SheetMaker maker(propane, Kind::p_v, {.VolumeMode = reduced_volume});
    const double Tcr = maker.fluid->substance.Tcr;
    maker.isotherms({0.85 * Tcr, 0.9 * Tcr, 0.95 * Tcr, Tcr, 1.05 * Tcr, 1.2 * Tcr});
    maker.overlay(Overlay::coexistence);
    maker.legend();
    return maker.sheet;
}

GraphDocument log_axes() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0.05F, .YMin = 1, .XMax = 200, .YMax = 20000});
    set_log_x(maker.sheet, true);
    set_log_y(maker.sheet, true);
    maker.isotherms({200, 250, 300, 369.83, 500, 800});
    maker.overlay(Overlay::coexistence);
    return maker.sheet;
}

GraphDocument narrow_log_axes() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0.08F, .YMin = 2500, .XMax = 1.5F, .YMax = 6500});
    set_log_x(maker.sheet, true);
    set_log_y(maker.sheet, true);
    maker.isotherms({350, 369.83, 400, 450});
    return maker.sheet;
}

GraphDocument swapped(GraphDocument sheet) {
    cmdChangeXY(sheet);
    return sheet;
}

GraphDocument black() {
    GraphDocument sheet = p_v_family();
    sheet.colors = full_black();
    show_legend(sheet);
    return sheet;
}

GraphDocument crowded() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0, .YMin = 0, .XMax = 2, .YMax = 8000});
    for (int i = 0; i < 24; ++i) maker.isotherms({300.0 + 10 * i});
    for (int i = 0; i < 12; ++i) maker.measured(12, 0.4 + 0.02 * i, 7000 - 350 * i, 0.12, -60);
    return maker.sheet;
}

GraphDocument crowded_with_legend() {
    GraphDocument sheet = crowded();
    show_legend(sheet);
    show_labels(sheet, false);
    return sheet;
}

GraphDocument long_labels() {
    SheetMaker maker(ethanol, Kind::sat_p_T);
    maker.curve();
    maker.input.kind = Kind::p_T;
    maker.overlay(Overlay::coexistence);
    maker.sheet.curve(1).series.label.text +=
        " and a remark of the user that does not end before the sheet does";
    maker.sheet.header.text +=
        ", with a heading that is far too long for one line of any picture of this size";
    maker.legend(LegendPlace::top_left);
    return maker.sheet;
}

GraphDocument bisector() {
    SheetMaker maker(propane, Kind::sat_rho_T);
    maker.curve();
    maker.overlay(Overlay::bisector);
    maker.critical_points();
    maker.legend(LegendPlace::bottom_left);
    return maker.sheet;
}

GraphDocument joule_thomson() {
    SheetMaker maker(nitrogen, Kind::joule_thomson_T);
    maker.isobars({100, 2000, 5000, 10000});
    return maker.sheet;
}

GraphDocument residual_enthalpy() {
    SheetMaker maker(carbon_dioxide, Kind::residual_h_T);
    maker.isobars({100, 1000, 3000, 7000, 15000});
    maker.legend(LegendPlace::bottom_right);
    return maker.sheet;
}

// Every symbol, every line, texts and axes designed by hand.
GraphDocument designed() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = -0.5F, .YMin = -2000, .XMax = 2, .YMax = 8000});
    for (int i = 0; i < 12; ++i) {
        maker.measured(5, 0.15 + 0.02 * i, 7400 - 520 * i, 0.2, 60);
        SeriesStyle& style = maker.sheet.set(i + 1).series.style;
        style.symbol = static_cast<Symbol>(i);
        style.symbol_size = 10;
    }
    maker.isotherms({320, 360, 400, 440, 480});
    for (int i = 1; i <= 5; ++i) {
        SeriesStyle& style = maker.sheet.curve(i).series.style;
        style.line = static_cast<LinePattern>(i - 1);
        style.width = i;
        style.symbol_size = 4;
    }
    GraphDocument& sheet = maker.sheet;
    sheet.x.origin = 0;
    sheet.y.origin = 0;
    sheet.x.step = 0.25;
    sheet.x.number_turn = TextTurn::upwards;
    sheet.y.title_turn = TextTurn::horizontal;
    sheet.y.digits = 2;
    sheet.y.grid = false;
    sheet.x.title_font = {.size = 13, .bold = true, .italic = true};
    sheet.footer.text = "Footer of the sheet\nin two lines";
    sheet.header.x = 0.3;
    sheet.header.y = 0.02;
    sheet.texts.push_back({.text = "A text by the user\nwith two lines",
                           .x = 0.55,
                           .y = 0.2,
                           .font = {.size = 10},
                           .color = rgb(0xC30096)});
    sheet.texts.push_back({.text = "beyond the edge", .x = 0.98, .y = 0.97});
    sheet.legend = {.visible = true, .place = LegendPlace::free, .x = 0.62, .y = 0.45, .font = {.size = 7}};
    sheet.curve(3).series.label.dx = -420;
    sheet.curve(3).series.label.dy = -40;
    return sheet;
}

GraphDocument zoomed() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0.19985F, .YMin = 4200, .XMax = 0.20015F, .YMax = 4300});
    maker.isotherms({369.5, 369.7, 369.9});
    return maker.sheet;
}

GraphDocument energies_by_mass() {
    SheetMaker maker(ammonia, Kind::s_T, {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass});
    maker.isobars({100, 500, 2000, 6000, 11000, 20000});
    maker.overlay(Overlay::coexistence);
    mark_T(maker.sheet, *maker.fluid, maker.input.units, maker.input.options);
    return maker.sheet;
}

GraphDocument without_curves() { return SheetMaker(propane, Kind::p_v).sheet; }

}  // namespace

std::vector<SampleSheet> sample_sheets() {
    return {{"p_v_family", p_v_family()},
            {"p_v_loops", p_v_loops()},
            {"T_v_family", T_v_family()},
            {"p_T_inversion", p_T_inversion()},
            {"lnp_over_inverse_T", lnp_over_inverse_T()},
            {"h_T_coexistence", h_T_coexistence()},
            {"h_s_chart", h_s_chart()},
            {"database_rhoL", database_function(Kind::db_rhoL)},
            {"database_cp", database_function(Kind::db_cpId_sinh)},
            {"reduced_units", reduced_units()},
            {"log_axes", log_axes()},
            {"narrow_log_axes", narrow_log_axes()},
            {"swapped", swapped(p_v_family())},
            {"black", black()},
            {"crowded", crowded()},
            {"crowded_with_legend", crowded_with_legend()},
            {"long_labels", long_labels()},
            {"bisector", bisector()},
            {"joule_thomson", joule_thomson()},
            {"residual_enthalpy", residual_enthalpy()},
            {"designed", designed()},
            {"zoomed", zoomed()},
            {"energies_by_mass", energies_by_mass()},
            {"without_curves", without_curves()}};
}

GraphDocument full_sheet() {
    GraphDocument sheet = without_curves();
    sheet.diagram.range = sheet.diagram.initial = {.XMin = 0, .YMin = 0, .XMax = 1, .YMax = 1};
    for (int k = 0; k < CurveSlots; ++k) {
        CurvePoints curve;
        for (int i = 0; i < static_cast<int>(HiddenPoints); ++i) {
            const double x = (i + 0.5) / static_cast<double>(HiddenPoints);
            const double y = 0.5 + 0.02 * (k - 12) + 0.2 * std::sin(9 * x + 0.1 * k);
            curve.points.push_back({static_cast<float>(x), static_cast<float>(y), 0, 0});
        }
        AddCurve(sheet, curve, {"300.00 K", "300.00 K"});
        sheet.curve(k + 1).series.style.line = LinePattern::solid;
        sheet.curve(k + 1).series.style.width = 2;
    }
    for (int k = 0; k < PointSlots; ++k) {
        std::vector<SheetPoint> points;
        for (int i = 0; i < 40; ++i)
            points.push_back({static_cast<float>(0.02 + 0.024 * i), static_cast<float>(0.04 + 0.08 * k)});
        cmdExternPoints(sheet, points, PointSource::data_editor);
    }
    return sheet;
}

GraphDocument black_log_sheet() {
    SheetMaker maker(propane, Kind::p_v);
    maker.range({.XMin = 0.05F, .YMin = 10, .XMax = 50, .YMax = 20000});
    set_log_x(maker.sheet, true);
    set_log_y(maker.sheet, true);
    maker.input.options.Dens = 2000;
    maker.isotherms({240, 260, 280, 300, 330, 350, 369.83, 400, 450, 600});
    maker.overlay(Overlay::coexistence);
    maker.measured(9, 1, 100, 2.5, 60);
    maker.critical_points();
    maker.sheet.colors = full_black();
    maker.legend(LegendPlace::bottom_left);
    return maker.sheet;
}

}  // namespace quom::test
