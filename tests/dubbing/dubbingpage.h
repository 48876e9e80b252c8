// SPDX-License-Identifier: MIT
#pragma once

#include "controls/elidedlabel.h"
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbingfunctionpage.h"
#include "MediaKits/FunctionPage/VideoDubbing/musicentry.h"
#include "MediaKits/MediaInfo/mediainfobase.h"
#include "support/pagetest.h"

#include <QSpinBox>
#include <QTimeEdit>

constexpr quint32 mp4AsSource = 1003001;
constexpr int settingsRole = Qt::UserRole + 10;
constexpr int entryRole = 257;

inline QListWidget *musics(const QWidget &dialog)
{
    return child<QListWidget>(dialog, "listWidget");
}

inline QVariantMap entry(const QWidget &dialog, int row)
{
    return *musics(dialog)->item(row)->data(entryRole).value<MusicEntry>();
}

inline QString rowText(const QWidget &dialog, int row, const char *label)
{
    const QListWidget *list = musics(dialog);
    return child<QLabel>(*list->itemWidget(list->item(row)), label)->text();
}

inline void addMusic(const QWidget &dialog, const QString &file)
{
    const int before = musics(dialog)->count();
    FileChooser::setNextAnswer({file});
    press(dialog, "btnAddDubbing");
    QTRY_COMPARE(musics(dialog)->count(), before + 1);
    // Until it has been read.
    QTRY_VERIFY(dialog.findChildren<MediaInfoBase *>().isEmpty());
}

inline void pick(const QWidget &dialog, int row)
{
    QListWidget *list = musics(dialog);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

inline void setStart(const QWidget &dialog, int ms)
{
    child<QTimeEdit>(dialog, "tedtStart")->setTime(QTime(0, 0).addMSecs(ms));
}

inline QSpinBox *box(const QWidget &dialog, const char *name)
{
    return child<QSpinBox>(dialog, name);
}

inline QString hint(const QWidget &dialog)
{
    return child<ElidedLabel>(dialog, "lblHint")->fullText();
}

/// The dubbing page, whose editor is opened by its rows' buttons.
class DubbingPage : public EditorPageTest<MediaDubbingFunctionPage>
{
public:
    explicit DubbingPage(const QStringList &files)
        : EditorPageTest(FunctionSection::dubbing, mp4AsSource, "VideoDubbingDialog",
                         "btnDubbingSet")
    {
        addRows(files, "btnDubbingSet");
    }
    QVariantMap settings(int index) const
    {
        return list()->item(index)->data(settingsRole).toMap();
    }
    QVariantMap dubbing(int index) const { return param(index).audioFilters.value(0).toMap(); }
    bool isUntouched(int index) const
    {
        return settings(index).isEmpty() && param(index).audioFilters.isEmpty();
    }
};
