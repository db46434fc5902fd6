// Pictures, pages and data of a diagram, by the entries of its menu.
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QRadioButton>
#include <QTimer>

#include "base/number_text.h"
#include "ui/charts/sheet_view.h"
#include "ui/main/diagram_windows.h"
#include "ui/metafile_reader.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/picture_dialogs.h"

namespace quom {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class DiagramPictures : public WindowDriver {
 protected:
    ~DiagramPictures() override { QApplication::clipboard()->clear(); }
    frmQGraph2D* window() const { return frame.child<frmQGraph2D>(); }
    GraphDocument& sheet() { return *session().diagram.sheet; }
    void trigger(const char* name) {
        QAction* action = menu(name);
        ASSERT_TRUE(action && action->isEnabled()) << name;
        action->trigger();
    }
    // A p-v sheet of propane with one isotherm, at T(cr).
    void go_to_diagram() {
        go_to_calculations();
        open_sheet();
    }
    void open_sheet() {
        trigger("mnuGraf_sub_cut_1");
        ASSERT_TRUE(window());
        press(window(), "cmdDraw");
        messages.take();
        QApplication::processEvents();
        ASSERT_EQ(CurveCount(sheet()), 1);
    }
    // Chooses the entry, and uses its dialog; a dialog that is still open then is given up.
    template <class Dialog, class Use>
    void with_dialog(const char* entry, Use use) {
        QTimer::singleShot(0, &frame, [use] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            use(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
        trigger(entry);
    }
    QString in_folder(const char* name) const { return folder.filePath(QLatin1String(name)); }
    void answer(const char* name) { dialogs->files.push_back(in_folder(name)); }
    QByteArray bytes_of(const char* name) const {
        QFile file(in_folder(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden); }
    std::string told() {
        const auto all = messages.take();
        EXPECT_EQ(all.size(), 1u);
        return all.empty() ? std::string() : all.front().second;
    }
    const QMimeData* clipboard() const { return QApplication::clipboard()->mimeData(); }
    void lose_sheet() {
        unload_sheet(session().diagram);
        close_diagram_windows(frame);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(DiagramPictures, the_clipboard_takes_pixels_or_vectors) {
    go_to_diagram();
    with_dialog<ClipboardDialog>("mnuBild_0", [](ClipboardDialog& dialog) {
        EXPECT_TRUE(dialog.optBitmap->isChecked());
        QStringList texts;
        for (const QLabel* label : dialog.findChildren<QLabel*>()) texts << label->text();
        EXPECT_THAT(texts.join(QLatin1Char('|')).toStdString(), HasSubstr("Test wether the vector"));
        EXPECT_THAT(texts.join(QLatin1Char('|')).toStdString(),
                    HasSubstr("=> use the Open-Source progr. Inkscape"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    ASSERT_TRUE(clipboard()->hasImage());
    EXPECT_FALSE(clipboard()->hasFormat(QStringLiteral("image/svg+xml")));
    // As large as on the screen, with two dots a pixel.
    const auto image = clipboard()->imageData().value<QImage>();
    EXPECT_NEAR(image.width(), 2 * window()->chart->width(), 1);
    EXPECT_NEAR(image.height(), 2 * window()->chart->height(), 1);
    EXPECT_THAT(window()->lblStatus->text().toStdString(), HasSubstr("bitmap"));

    with_dialog<ClipboardDialog>("mnuBild_0", [](ClipboardDialog& dialog) {
        QTest::mouseClick(dialog.optVector, Qt::LeftButton, {}, {8, dialog.optVector->height() / 2});
        QTest::keyClick(dialog.optVector, Qt::Key_Return);
    });
    EXPECT_TRUE(clipboard()->data(QStringLiteral("image/png")).startsWith("\x89PNG"));
    const test::Metafile emf = test::read_emf(clipboard()->data(QStringLiteral("image/x-emf")));
    const QByteArray svg = clipboard()->data(QStringLiteral("image/svg+xml"));
    for (const std::string& text :
         {std::string("v / (m^3/kmol)"), std::string("p / kPa"), sheet().curve(1).series.label.text}) {
        EXPECT_THAT(emf.text_list(), Contains(QString::fromStdString(text)));
        EXPECT_TRUE(svg.contains(text.c_str())) << text;
    }
    with_dialog<ClipboardDialog>("mnuBild_0", [](ClipboardDialog& dialog) {
        EXPECT_TRUE(dialog.optVector->isChecked());  // remembered
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_TRUE(clipboard()->hasFormat(QStringLiteral("image/x-emf")));
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(DiagramPictures, image_files_have_the_form_of_their_name) {
    go_to_diagram();
    const std::pair<const char*, QByteArray> rows[] = {
        {"a.BMP", "BM"}, {"a.wmf", QByteArray("\xD7\xCD\xC6\x9A")}, {"a.emf", QByteArray("\x01\0\0\0", 4)}};
    for (const auto& [name, mark] : rows) {
        answer(name);
        trigger("mnuBild_1");
        EXPECT_TRUE(bytes_of(name).startsWith(mark)) << name;
    }
    EXPECT_EQ(test::read_emf(bytes_of("a.emf")).text_list(), test::read_wmf(bytes_of("a.wmf")).text_list());
    const FileQuestion& asked = dialogs->asked.back();
    EXPECT_EQ(asked.title, QStringLiteral("Save Image File"));
    EXPECT_EQ(asked.filter,
              QStringLiteral("Bitmap-file (*.BMP);;Windows MetaFile (*.WMF);;Enhanced MetaFile (*.EMF)"));
    EXPECT_EQ(asked.start, in_folder("Propane p-v.bmp"));  // the folder of the last one
    // A name whose ending is no form gets that of the dialog, and is asked for when there is such a file.
    for (const Answer reply : {Answer::no, Answer::yes}) {
        QFile::remove(in_folder("R 0.5.bmp"));
        QFile::copy(in_folder("a.emf"), in_folder("R 0.5.bmp"));
        answer("R 0.5");
        messages.answers = {reply};
        trigger("mnuBild_1");
        EXPECT_THAT(told(), StartsWith("R 0.5.bmp already exists."));
        EXPECT_EQ(bytes_of("R 0.5.bmp").startsWith("BM"), reply == Answer::yes);
    }
}

TEST_F(DiagramPictures, a_picture_for_a_report_has_the_size_that_is_typed) {
    go_to_diagram();
    const QStringList before = files();
    answer("none.png");
    with_dialog<PictureSizeDialog>("mnuBild_3", [](PictureSizeDialog& dialog) {
        EXPECT_EQ(dialog.lblPixels->text(), QStringLiteral("1890 x 1299 pixels"));
        const std::pair<int, const char*> refused[] = {
            {picture_width, "0"}, {picture_height, "6000"}, {picture_dpi, "5"}, {picture_dpi, "2400"}};
        for (const auto& [box, text] : refused) {
            if (QLatin1String(text) == QLatin1String("2400"))  // 1500 million pixels
                for (const int side : {0, 1}) dialog.box[side]->setText(QStringLiteral("400"));
            const QString good = dialog.box[box]->text();
            dialog.box[box]->setText(QLatin1String(text));
            QTest::mouseClick(dialog.cmdOK, Qt::LeftButton);
            EXPECT_TRUE(dialog.box[box]->refused()) << box << text;
            EXPECT_TRUE(dialog.isVisible());
            dialog.box[box]->setText(good);
        }
    });
    EXPECT_EQ(files(), before);  // given up
    const auto save = [this](const char* format, const char* name) {
        answer(name);
        with_dialog<PictureSizeDialog>("mnuBild_3", [format](PictureSizeDialog& dialog) {
            choose(dialog.cmbFormat, format);
            EXPECT_EQ(dialog.box[picture_dpi]->isEnabled(), QLatin1String(format) == QLatin1String("PNG"));
            dialog.box[picture_width]->setFocus();
            dialog.box[picture_width]->selectAll();
            QTest::keyClicks(dialog.box[picture_width], QStringLiteral("127"));
            dialog.box[picture_height]->setText(QStringLiteral("76,2"));
            dialog.box[picture_dpi]->setText(QStringLiteral("150"));
            QTest::mouseClick(dialog.cmdOK, Qt::LeftButton);
        });
    };
    dialogs->files.clear();
    save("PNG", "a.png");
    EXPECT_EQ(QImage(in_folder("a.png")).size(), QSize(750, 450));  // 5 and 3 inches
    save("SVG", "a");
    EXPECT_TRUE(bytes_of("a.svg").contains("width=\"127mm\" height=\"76.2mm\""));
    save("PDF", "a.pdf");
    EXPECT_TRUE(bytes_of("a.pdf").contains("/MediaBox [0 0 360.000000 216.000000]"));
    EXPECT_THAT(dialogs->asked.back().start.toStdString(), HasSubstr("Propane p-v.pdf"));
    EXPECT_TRUE(messages.take().empty());
    with_dialog<PictureSizeDialog>("mnuBild_3", [](PictureSizeDialog& dialog) {
        EXPECT_EQ(dialog.format(), "pdf");  // remembered
        EXPECT_EQ(dialog.box[picture_height]->text(), QStringLiteral("76.2"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
}

TEST_F(DiagramPictures, prints_one_page_after_the_question_for_a_black_sheet) {
    go_to_diagram();
    trigger("mnuBild_2");
    ASSERT_EQ(dialogs->pages.size(), 1u);
    EXPECT_TRUE(messages.take().empty());
    sheet().colors = full_black();
    for (const Answer reply : {Answer::no, Answer::yes}) {
        messages.answers = {reply};
        trigger("mnuBild_2");
        EXPECT_EQ(told(), "You have chosen a black chart. \nDo you really want to print it in that design?");
    }
    ASSERT_EQ(dialogs->pages.size(), 2u);
    // The page is that of the sheet when it was chosen.
    lose_sheet();
    QPrinter printer;
    printer.setOutputFileName(in_folder("page.pdf"));
    printer.setPageOrientation(QPageLayout::Landscape);
    EXPECT_TRUE(dialogs->pages.front().paint(printer));
    EXPECT_TRUE(bytes_of("page.pdf").startsWith("%PDF"));
    EXPECT_GT(bytes_of("page.pdf").size(), 4000);
}

TEST_F(DiagramPictures, the_preview_shows_a_page_across) {
    go_to_diagram();
    trigger("mnuBild_2");
    ASSERT_EQ(dialogs->pages.size(), 1u);
    QTimer::singleShot(0, &frame, [] {
        auto* dialog = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        EXPECT_THAT(dialog->windowTitle().toStdString(), HasSubstr("2D-Diagram, Propane"));
        EXPECT_EQ(dialog->printer()->pageLayout().orientation(), QPageLayout::Landscape);
        EXPECT_EQ(dialog->printer()->pageLayout().pageSize().id(), QPageSize::A4);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    EXPECT_TRUE(Dialogs().print_page(&frame, dialogs->pages.front()));
    dialogs->printer_there = false;
    trigger("mnuBild_2");
    EXPECT_EQ(told(), "The printer cannot be used.");
}

TEST_F(DiagramPictures, data_go_to_the_clipboard_and_into_a_file) {
    go_to_diagram();
    const SheetPoint point = sheet().curve(1).series.points[0];
    change([](Document& d) {
        d.options.SepCSV = '|';
        d.options.DezimalKomma = true;
    });
    trigger("mnuCopyData");
    const std::string text = clipboard()->text().toStdString();
    EXPECT_THAT(text, StartsWith("diagram: 1, "));
    EXPECT_THAT(text, HasSubstr("\nsubstance: Propane"));
    EXPECT_THAT(text, HasSubstr("\nC.1 v\tC.1 p\tC.1 T\nm^3/kmol\tkPa\tK\n"));
    EXPECT_THAT(clipboard()->html().toStdString(), HasSubstr("<th>C.1 p</th>"));
    const std::string csv = clipboard()->data(QStringLiteral("text/csv")).toStdString();
    EXPECT_THAT(csv, StartsWith("# diagram: 1, "));
    const std::string x = genNum(point.X), row = "\r\n" + x.substr(0, x.find('.')) + ",";
    EXPECT_THAT(csv, HasSubstr("\r\nC.1 v|C.1 p|C.1 T\r\nm^3/kmol|kPa|K" + row));
    answer("data.csv");
    trigger("mnuSaveData");
    EXPECT_EQ(bytes_of("data.csv").toStdString(), csv);
    EXPECT_THAT(dialogs->asked.back().start.toStdString(), HasSubstr("Propane p-v.csv"));
    EXPECT_TRUE(messages.take().empty());
    delete_all(sheet());
    for (const char* entry : {"mnuCopyData", "mnuSaveData"}) {
        trigger(entry);
        EXPECT_EQ(told(), "The diagram has neither curves nor points nor marks.");
    }
}

TEST_F(DiagramPictures, faults_are_told_and_leave_nothing) {
    go_to_diagram();
    QFile::link(QStringLiteral("/dev/full"), in_folder("full.emf"));
    const QStringList before = files();
    const std::pair<const char*, const char*> rows[] = {{"full.emf", "full.emf"},     // no room on the disk
                                                        {"none/a.emf", "a.emf"},      // no such folder
                                                        {"quom.q07/a.bmp", "a.bmp"},  // no folder at all
                                                        {"a.gif", "not as \".gif\""}};
    for (const auto& [name, sentence] : rows) {
        answer(name);
        trigger("mnuBild_1");
        EXPECT_THAT(told(), HasSubstr(sentence)) << name;
    }
    answer("none/a.csv");
    trigger("mnuSaveData");
    EXPECT_THAT(told(), HasSubstr("a.csv"));
    trigger("mnuBild_1");  // given up
    EXPECT_TRUE(messages.take().empty());
    EXPECT_EQ(files(), before);
    EXPECT_EQ(session().diagram.Folder, "");
}

TEST_F(DiagramPictures, the_sheet_goes_while_the_user_is_asked) {
    const auto expect_told = [this] {
        EXPECT_THAT(told(), HasSubstr("no longer there"));
        EXPECT_FALSE(window());
        open_sheet();
    };
    go_to_diagram();
    const QStringList before = files();
    dialogs->meanwhile = [this] { lose_sheet(); };
    answer("a.emf");
    trigger("mnuBild_1");
    dialogs->meanwhile = {};
    expect_told();
    with_dialog<ClipboardDialog>("mnuBild_0", [this](ClipboardDialog& dialog) {
        lose_sheet();
        dialog.cmdOK->click();
    });
    EXPECT_TRUE(!clipboard() || !clipboard()->hasImage());
    expect_told();
    with_dialog<PictureSizeDialog>("mnuBild_3", [this](PictureSizeDialog& dialog) {
        lose_sheet();
        dialog.cmdOK->click();
    });
    expect_told();
    EXPECT_EQ(files(), before);
}

}  // namespace
}  // namespace quom
