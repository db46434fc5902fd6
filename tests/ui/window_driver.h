// The whole desktop program under test: starter database in a folder of its own, boxes and dialogs answered
// from queues, controls found by their names.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "forms/shell.h"
#include "support/queued_messages.h"
#include "support/test_paths.h"
#include "ui/main/mdiQUOM.h"
#include "ui/widgets/dialogs.h"

namespace quom {

// Answers questions for files and texts from queues; an empty queue or file means cancelled.
class QueuedDialogs : public Dialogs {
 public:
    std::deque<QString> files;
    std::deque<std::optional<QString>> texts;
    std::vector<std::pair<QString, QString>> texts_asked;  // title, text proposed
    std::vector<FileQuestion> asked;
    std::optional<QString> open_file(QWidget*, const FileQuestion& question) override {
        return next(question);
    }
    std::optional<QString> save_file(QWidget*, const FileQuestion& question) override {
        return next(question);
    }
    void print(QWidget*, const PrintedText& text) override { printed.push_back(text); }
    bool print_page(QWidget*, const PrintedPage& page) override {
        pages.push_back(page);
        return printer_there;
    }
    std::vector<PrintedText> printed;
    std::vector<PrintedPage> pages;
    bool printer_there = true;
    std::function<void()> meanwhile;  // happens while a question for a file is open
    std::optional<QString> ask_text(QWidget*, const QString& title, const QString&,
                                    const QString& proposed) override {
        texts_asked.emplace_back(title, proposed);
        if (texts.empty()) return std::nullopt;
        const std::optional<QString> text = texts.front();
        texts.pop_front();
        return text;
    }

 private:
    std::optional<QString> next(const FileQuestion& question) {
        asked.push_back(question);
        if (meanwhile) meanwhile();
        if (files.empty() || files.front().isEmpty()) return std::nullopt;
        const QString file = files.front();
        files.pop_front();
        return file;
    }
};

class WindowDriver : public ::testing::Test {
 protected:
    WindowDriver() : frame(folder.path().toStdString()) {
        for (const char* name : {"quom.q07", "SYNOM7.TXT", "marks.csv"})
            QFile::copy(QString::fromStdString(test::starter_data()) + QLatin1Char('/') + QLatin1String(name),
                        folder.filePath(QLatin1String(name)));
        auto queued = std::make_unique<QueuedDialogs>();
        dialogs = queued.get();
        frame.set_dialogs(std::move(queued));
        frame.bench().listen(messages);
        frame.show();
        frame.start({});
    }
    ~WindowDriver() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    Session& session() { return frame.session(); }
    const Document& document() { return session().document; }
    // Commits what a change makes of the document, as a dialog does.
    template <class Change>
    void change(Change make) {
        Document changed = document();
        make(changed);
        frame.bench().commit(std::move(changed));
    }
    QAction* menu(const char* name) const {
        for (QAction* action : frame.findChildren<QAction*>(QLatin1String(name))) return action;
        const auto* submenu = frame.findChild<QMenu*>(QLatin1String(name));
        return submenu ? submenu->menuAction() : nullptr;
    }
    bool enabled(const char* name) const { return menu(name) && menu(name)->isEnabled(); }
    template <class Control>
    static Control* in(const QWidget* window, const char* name) {
        auto* control = window ? window->findChild<Control*>(QLatin1String(name)) : nullptr;
        EXPECT_TRUE(control) << name;
        return control;
    }
    static void press(const QWidget* window, const char* name) {
        if (auto* button = in<QAbstractButton>(window, name)) {
            EXPECT_TRUE(button->isEnabled()) << name;
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    // Chooses the entry of this text, as a user would.
    static void choose(QComboBox* box, const char* text) {
        const int at = box->findText(QLatin1String(text));
        ASSERT_GE(at, 0) << text;
        box->setCurrentIndex(at);
    }
    void open_starter_database() {
        dialogs->files.push_back(folder.filePath(QStringLiteral("quom.q07")));
        menu("mnuData_OpenBank_0")->trigger();
    }
    void choose_substance(const char* name);
    // Database, substance, models as they are proposed.
    void go_to_calculations(const char* name = "Propane");

    QTemporaryDir folder;
    QueuedMessages messages;
    mdiQUOM frame;
    QueuedDialogs* dialogs = nullptr;
};

}  // namespace quom
