// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarkfunctionpage.h"
#include "support/pagetest.h"

#include <QComboBox>
#include <QDialog>
#include <QPlainTextEdit>

constexpr quint32 mp4AsSource = 1003001;
constexpr int endLimitMs = 60000;

/// The watermark page, whose editor is opened by its rows' buttons.
class WatermarkPage : public PageTest<MediaWatermarkFunctionPage>
{
public:
    explicit WatermarkPage(const QStringList &files, quint32 preset = mp4AsSource)
        : PageTest(FunctionSection::watermark, preset)
    {
        addRows(files, "btnWatermarkSet");
    }

    /// Opens the editor modally for `act`, which has to end it.
    template<class Act>
    void edit(int row, Act act)
    {
        bool opened = false;
        whenModal("VideoWatermarkDialog", [&](QWidget &dialog) {
            opened = true;
            act(dialog);
            // After a check that failed, too.
            if (dialog.isVisible())
                qobject_cast<QDialog *>(&dialog)->done(QDialog::Rejected);
        });
        press(*rowWidget(row), "btnWatermarkSet");
        QVERIFY(opened);
    }
    QVariantList marks(int row) const { return param(row).videoFilters; }
    QVariantMap mark(int row, int index) const { return marks(row).value(index).toMap(); }
    bool convert(int index)
    {
        press(*rowWidget(index), "btnConvert");
        return QTest::qWaitFor([&] { return MediaTask::isFinal(state(index)); }, endLimitMs) &&
               state(index) == MediaTask::FINISHED;
    }
};

inline QListWidget *markList(const QWidget &dialog)
{
    return child<QListWidget>(dialog, "listWidget");
}

inline void addText(QWidget &dialog, const QString &text, int size = 0)
{
    whenModal("TextEditDialog", [&](QWidget &edit) {
        child<QPlainTextEdit>(edit, "plainTextEdit")->setPlainText(text);
        if (size > 0)
            child<QComboBox>(edit, "cbFontSize")->setEditText(QString::number(size));
        press(edit, "btnOK");
    });
    press(dialog, "btnAddTextWM");
}

inline void addImage(QWidget &dialog, const QString &path)
{
    FileChooser::setNextAnswer({path});
    press(dialog, "btnAddImageWM");
}

/// Waits until the current mark's box is there and returns it.
inline QWidget *selectedBox(QWidget &dialog)
{
    const auto find = [&dialog]() -> QWidget * {
        for (QWidget *box : dialog.findChildren<QWidget *>()) {
            if (box->inherits("DrmWidget") && box->property("itemSelected").toBool() &&
                box->isVisible() && box->width() > 0)
                return box;
        }
        return nullptr;
    };
    return QTest::qWaitFor([&] { return find() != nullptr; }) ? find() : nullptr;
}
