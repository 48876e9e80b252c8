// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

#include <QPixmap>
#include <QString>

/// What a row tells about one file.
struct MediaFacts
{
    /// Takes length and size of the file.
    void setFile(const MediaFormatInfo &file);

    /// "1280x720"; empty unless both are above 0.
    static QString sizeInPixels(int width, int height);
    /// The same of a record that may be null, as its picture is shown.
    static QString sizeInPixels(const QSharedPointer<VEncParam> &video);

    QString format;
    QString detail; ///< what the row's page is about: picture size or bitrate
    QString duration;
    QString size;
};

/// Everything that a row shows, apart from the widgets that show it: these exist only while the row
/// is in sight.
struct RowContent
{
    enum Page { IdlePage, WorkingPage, DonePage };

    QString inputName;
    MediaFacts in;
    MediaFacts out;
    QPixmap picture; ///< null while there is none

    QString outputName;
    QString outputSuffix; ///< with its dot
    bool nameReadOnly = false;

    QString settings;  ///< text of the button that opens the row's choices; empty hides it
    int speedType = 0; ///< chooses the start button's text, from 1; 0 hides the speed button
    bool editorEnabled = true;
    int fragments = 0; ///< how many were made of a source that shows them below itself

    Page page = IdlePage;
    int progress = -1; ///< percent; -1 draws nothing
    QString progressText;
    QString remainingText;
    bool paused = false;
    bool waiting = false; ///< on the working page, but not at work: there is no time to tell

    bool startEnabled = true; ///< false as long as there is nothing to do yet
    QString hindrance;        ///< why the row can't be started as it is; empty when it can
    bool failed = false;
    QString failureTip;
    QString remark; ///< what a finished result lacks; empty when it is all that was asked for
};
