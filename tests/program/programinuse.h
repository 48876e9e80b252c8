// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MainWindow/mainwindow.h"
#include "program/screenfilm.h"

#include <QDialog>
#include <QTemporaryDir>

#include <memory>

/// Runs a test object inside the program's own application.
int runInProgram(int argc, char *argv[], QObject &test);

/// The whole program on a desktop, by mouse and keyboard: what a user sees on the screen counts.
/// What doesn't come in time fails the running test.
class ProgramInUse
{
public:
    static constexpr int limitMs = 15000;

    /// Opens the main window, with a folder of its own for all results.
    void open();
    /// Leaves nothing behind.
    void leave();
    /// Closes the preview and empties the page's list.
    void tidy();

    MainWindow &window() const { return *m_window; }
    QString film() const { return path("film.mp4"_s); }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    const QWidget &currentPage() const;
    /// @return whether the page came
    bool goTo(const char *pageButton);
    /// Goes to a page and adds a film to its rows.
    /// @param ready the row's button that the film's probe enables, where the row has it
    /// @return the film's row; null when it didn't come
    QWidget *addFilm(const char *pageButton, const char *ready = "btnCut",
                     const QString &film = QString());

    static QWidget *preview() { return visibleWindow("MediaPreviewWnd"); }
    /// The preview tells the volume when it starts to play.
    static void clickToastAway();

    /// Opens a dialog by a button; it runs modally, as for a user, and is dismissed when `act`
    /// hasn't ended it.
    template<class Act>
    static void inDialog(const QWidget &opener, const char *dialogClass, Act act)
    {
        bool hasRun = false;
        whenModal(dialogClass, [&](QWidget &dialog) {
            act(dialog);
            if (dialog.isVisible())
                static_cast<QDialog &>(dialog).reject();
            hasRun = true;
        });
        Desktop::click(opener);
        QTRY_VERIFY_WITH_TIMEOUT(hasRun, 4 * limitMs);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }

    /// In the middle of a player's picture, beside the frame's lines.
    static QColor seenOfFilm(const QWidget &window);
    static void awaitColour(const QWidget &window, const QColor &colour);
    static void awaitFilm(const QWidget &window);

private:
    QTemporaryDir m_folder;
    std::unique_ptr<MainWindow> m_window;
};
