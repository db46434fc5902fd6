// The chart of a session: refusals, zoom, states last calculated, data for other programs.
#include "forms/state_chart_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/saturation.h"
#include "forms/sample_session.h"

namespace quom {
namespace {

Session confirmed(Eos code = Eos::peng_robinson, const SubstanceConstants& x = sample::propane_constants()) {
    Session session = sample::propane(code, x);
    session.database.DatabaseKind = 7;
    session.shell.ModelsConfirmed = true;
    return session;
}

TEST(StateChartForm, SaysWhatStandsAgainstAChart) {
    Session session = confirmed();
    EXPECT_TRUE(session_chart(session, {}).chart.exists());
    session.shell.ModelsConfirmed = false;
    EXPECT_EQ(session_chart(session, {}).chart.fault, "first confirm the models");
    const auto fault = [](auto change) {
        SubstanceConstants x = sample::propane_constants();
        change(x);
        return session_chart(confirmed(Eos::peng_robinson, x), {}).chart.fault;
    };
    EXPECT_NE(fault([](SubstanceConstants& x) { x.MolMass = 0; }).find("molar mass"), std::string::npos);
    EXPECT_NE(fault([](SubstanceConstants& x) { x.cpDIPPR = {}; }).find("cp"), std::string::npos);
    EXPECT_FALSE(fault([](SubstanceConstants& x) { x.pcr = 0; }).empty());
    EXPECT_NE(session_chart(confirmed(Eos::virial_soave), {}).chart.fault.find("V-phase alone"),
              std::string::npos);
    // At 0 °C there is no liquid below a triple point of 350 K.
    SubstanceConstants x = sample::propane_constants();
    x.Ttr = 350;
    StateChartForm form;
    form.reference = 1;
    EXPECT_NE(session_chart(confirmed(Eos::peng_robinson, x), form).chart.fault.find("triple point"),
              std::string::npos);
}

TEST(StateChartForm, AZoomStaysWithinTheChart) {
    const Session session = confirmed();
    for (const ChartKind kind : {ChartKind::log_ph, ChartKind::Ts, ChartKind::hs}) {
        StateChartForm form{.kind = kind};
        const SessionChart whole = session_chart(session, form);
        const ChartAxis &x = whole.whole.x, &y = whole.whole.y;
        form.window = zoomed_window(whole.chart, 0.75, 0.2, 0.25, 0.6);
        ASSERT_TRUE(form.window);
        SessionChart part = session_chart(session, form);
        EXPECT_NEAR(x.place(part.chart.x.low), 0.25, 1e-9);
        EXPECT_NEAR(x.place(part.chart.x.high), 0.75, 1e-9);
        EXPECT_NEAR(y.place(part.chart.y.low), 0.2, 1e-9);
        EXPECT_NEAR(y.place(part.chart.y.high), 0.6, 1e-9);
        EXPECT_EQ(part.whole.x.low, x.low);
        // A point keeps its place while it is zoomed at.
        const double at = part.chart.x.shown_at(0.3);
        form.window = zoomed_window(part.chart, part.whole, 0.3, 0.5, 0.5);
        part = session_chart(session, form);
        EXPECT_NEAR(part.chart.x.place(at), 0.3, 1e-9);
        EXPECT_NEAR(x.place(part.chart.x.high) - x.place(part.chart.x.low), 0.25, 1e-9);
        form.window = moved_window(part.chart, part.whole, 9, -9);
        part = session_chart(session, form);
        EXPECT_NEAR(x.place(part.chart.x.high), 1.0, 1e-9);
        EXPECT_NEAR(y.place(part.chart.y.low), 0.0, 1e-9);
        EXPECT_NEAR(x.place(part.chart.x.high) - x.place(part.chart.x.low), 0.25, 1e-9);
        EXPECT_FALSE(zoomed_window(part.chart, part.whole, 0.5, 0.5, 100));
        EXPECT_FALSE(zoomed_window(part.chart, 0.5, 0.5, 0.501, 0.9));
        // Of a window of another chart something is shown.
        form.window = ChartWindow{1e6, 2e6, 1e6, 2e6};
        part = session_chart(session, form);
        ASSERT_TRUE(part.chart.exists());
        EXPECT_LE(part.chart.x.high, x.high * (1 + 1e-12));
        EXPECT_GT(part.chart.x.high, part.chart.x.low);
    }
}

// The ring stands at the stable state; two phases in equilibrium without a vapor fraction are two states.
TEST(StateChartForm, KnowsTheStateLastCalculated) {
    Session session = confirmed();
    const StateChart chart = session_chart(session, {}).chart;
    EXPECT_TRUE(calculated_states(session, chart).empty());
    const auto calculated = [&](Mode mode, double T, double p) {
        Document document = session.document;
        document.calc.CalcMode = mode;
        document.exp.points.edit()[0] = {.T = T, .p = p};
        commit(session, std::move(document));
        calculate(session, 0);
        return calculated_states(session, chart);
    };
    auto states = calculated(Mode::T_p, 300, 500);
    ASSERT_EQ(states.size(), 1u);
    EXPECT_NEAR(states[0].v, 300 * RGas / 500, 0.15 * 300 * RGas / 500);  // vapor: near to the ideal gas
    states = calculated(Mode::T_p, 300, 2000);
    ASSERT_EQ(states.size(), 1u);
    EXPECT_LT(states[0].v, 0.12);  // liquid
    states = calculated(Mode::equilibrium_T, 300, 0);
    ASSERT_EQ(states.size(), 2u);
    const Saturation at = pLV_EOS(*session.fluid, 300);
    EXPECT_NEAR(states[0].v, at.vL, 1e-6 * at.vL);
    EXPECT_NEAR(states[1].v, at.vV, 1e-6 * at.vV);
    forget_results(session);
    EXPECT_TRUE(calculated_states(session, chart).empty());
}

TEST(StateChartForm, DataAreThoseInSight) {
    const Session session = confirmed();
    StateChartForm form{.T_unit = 1, .p_unit = 1};
    const StateChart chart = session_chart(session, form).chart;
    const ExportTable table = chart_table(chart);
    EXPECT_EQ(table.heads, (std::vector<std::string>{"line", "value", "T", "p", "v", "h", "s", "x"}));
    EXPECT_EQ(table.units[2], "°C");
    EXPECT_EQ(table.units[3], "bar");
    ASSERT_GT(table.rows.size(), 1000u);
    for (const auto& row : table.rows) {
        ASSERT_EQ(row.size(), table.heads.size());
        const double p = std::stod(row[3].text);
        EXPECT_TRUE(p >= chart.y.low * (1 - 1e-7) && p <= chart.y.high * (1 + 1e-7));
        if (row[0].text == "T") {
            EXPECT_NEAR(std::stod(row[2].text), std::stod(row[1].text), 1e-4);
        }
    }
    const std::string text = state_for_clipboard(chart, stable_state(*chart.fluid, 300, 500));
    EXPECT_EQ(text.substr(0, text.find('\t')), "T / °C");
    EXPECT_NE(text.find("\n26.85\t5\t"), std::string::npos) << text;
}

}  // namespace
}  // namespace quom
