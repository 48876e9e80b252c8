// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MainWindow/mainwindow.h"

#include <QRect>
#include <QStringList>

/// The main window before a plain backdrop, and what a shot does with it.
class Stage
{
public:
    /// @param mediaDir folder of the files that fill the lists
    explicit Stage(const QString &mediaDir);

    MainWindow &window() { return m_window; }
    /// The media files, by name.
    const QStringList &media() const { return m_media; }

    /// The only child of the class and name below `parent`; ends the program when there is none.
    template<class T>
    static T &child(const QWidget &parent, const char *name)
    {
        T *found = parent.findChild<T *>(QLatin1String(name));
        if (found == nullptr)
            qFatal("no %s in %s", name, parent.metaObject()->className());
        return *found;
    }
    void press(const char *button);
    /// Goes to a page by its button.
    template<class Page>
    Page &open(const char *button)
    {
        press(button);
        return *m_window.findChild<Page *>();
    }
    /// The same, and adds the media files.
    template<class Page>
    void fill(const char *button)
    {
        open<Page>(button).addFiles(m_media);
        awaitReading();
    }
    QString longestFilm() const;
    /// Waits until the player below the window shows something.
    static void awaitPicture(const QWidget &window);
    /// The same, and makes it keep still.
    static void pausePlayer(const QWidget &window);
    /// Shows a dialog or popup, which is deleted when the next shot begins.
    void show(QWidget *window);

    /// Saves what the screen shows of the windows, with their shadows, as soon as it keeps still.
    /// False when the file can't be written.
    bool save(const QString &path);
    /// Closes everything but the main window.
    void tidy();

private:
    /// Waits until the files of all rows have been read.
    void awaitReading() const;
    QRect shownArea() const;

    QWidget m_backdrop;
    MainWindow m_window;
    QStringList m_media;
};
