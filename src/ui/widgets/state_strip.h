// The strip above a result: what state it is in words, how far the equation of state is from the record,
// every reservation; why there is no result; or that what is shown is not up to date.
#pragma once
#include <QWidget>
#include <optional>
#include <vector>

#include "calc/state_words.h"

class QPushButton;

namespace quom {

class StateStrip : public QWidget {
    Q_OBJECT
 public:
    explicit StateStrip(QWidget* parent = nullptr);
    // The state of an outcome, or why there is none.
    void show_outcome(const Fluid& fluid, const Outcome& outcome);
    // What is shown below the strip is older than what was chosen or typed: what changed, and what is shown.
    void show_stale(const QString& changed, const QString& shown);
    bool is_stale() const { return form_ == Form::stale; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    QPushButton* cmdCalculateAgain;  // shown while stale

 signals:
    void calculate_again();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    enum class Form { empty, state, refused, stale };
    enum class Ink { text, hint, warning, error };
    // What is not broken within a line; wide ones go to the next line.
    struct Piece {
        QString text;
        Ink ink = Ink::text;
        bool head = false;  // of the headline, larger
        bool bold = false;
        int icon = 0;         // size of a warning triangle before the text, 0: none
        double gap = 0;       // to the piece before
        bool joined = false;  // never parted from the piece before
    };
    using Line = std::vector<Piece>;
    struct Placed {
        const Piece* piece;
        double x, top, height;
    };
    struct Placement {
        std::vector<Placed> pieces;
        double height = 0;
    };

    static Line words(const QString& text, Ink ink, bool head, bool bold = false, int icon = 0);
    QFont font_of(const Piece& piece) const;
    double width_of(const Piece& piece) const;
    double gap_before(const Piece& piece) const;
    double text_left() const;
    double text_right_margin() const;
    Placement place(double width) const;
    void paint_ground(QPainter& painter) const;
    void paint_picture(QPainter& painter, const QRectF& frame) const;
    QColor colour_of(Ink ink) const;
    void changed(Form form, std::vector<Line> lines);
    void place_button();

    Form form_ = Form::empty;
    bool reserved_ = false;  // a reservation is shown: the bar warns
    std::vector<Line> lines_;
    std::optional<SaturationPicture> picture_;
};

}  // namespace quom
