// What is asked before a diagram goes to the clipboard or into a picture file.
#pragma once
#include <QDialog>

#include "forms/picture_form.h"

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quom {

class NumberBox;
class UiMemory;

// "Bitmap Image" or "Vector Image".
class ClipboardDialog : public QDialog {
    Q_OBJECT
 public:
    ClipboardDialog(UiMemory& memory, QWidget* parent);
    bool vector() const;
    QRadioButton *optBitmap, *optVector;
    QPushButton *cmdOK, *cmdCancel;

 private:
    void take();
    UiMemory& memory_;
};

// Format and size of a picture for a report. What was taken is offered again in the session.
class PictureSizeDialog : public QDialog {
    Q_OBJECT
 public:
    PictureSizeDialog(UiMemory& memory, QWidget* parent);
    std::string format() const;  // "png"
    const PictureSize& size() const { return size_; }
    QComboBox* cmbFormat;
    NumberBox* box[3];  // as PictureBox
    QLabel* lblPixels;
    QPushButton *cmdOK, *cmdCancel;

 private:
    PictureTexts typed() const;
    void show_pixels();
    void take();
    UiMemory& memory_;
    PictureSize size_;
};

}  // namespace quom
