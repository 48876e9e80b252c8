// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarkfunctionpage.h"
#include "support/mediatest.h"
#include "support/pagetest.h"

#include <QComboBox>
#include <QPlainTextEdit>

constexpr quint32 mp4AsSource = 1003001;

/// The watermark page, whose editor is opened by its rows' buttons.
class WatermarkPage : public EditorPageTest<MediaWatermarkFunctionPage>
{
public:
    explicit WatermarkPage(const QStringList &files, quint32 preset = mp4AsSource)
        : EditorPageTest(FunctionSection::watermark, preset, "VideoWatermarkDialog",
                         "btnWatermarkSet")
    {
        addRows(files, "btnWatermarkSet");
    }

    QVariantList marks(int row) const { return param(row).videoFilters; }
    QVariantMap mark(int row, int index) const { return marks(row).value(index).toMap(); }
};

inline QListWidget *markList(const QWidget &dialog)
{
    return child<QListWidget>(dialog, "listWidget");
}

/// Answers the next dialog that asks for a text.
inline void typeText(const QString &text, int size = 0)
{
    whenModal("TextEditDialog", [text, size](QWidget &edit) {
        child<QPlainTextEdit>(edit, "plainTextEdit")->setPlainText(text);
        if (size > 0)
            child<QComboBox>(edit, "cbFontSize")->setEditText(QString::number(size));
        press(edit, "btnOK");
    });
}

inline void addText(QWidget &dialog, const QString &text, int size = 0)
{
    typeText(text, size);
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

/// A test with a film of one colour and a logo, whose names have all that filters misread.
class WatermarkTest : public MediaTest
{
    Q_OBJECT

protected:
    const QString m_film = media("片 a.mp4"_s);
    const QString m_logo = media("标 = 'a' [b];%d.png"_s);

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i color=0x206080:s=640x360:r=10:d=4 @"_s, {m_film});
        QImage logo(120, 60, QImage::Format_ARGB32);
        logo.fill(Qt::red);
        QVERIFY(logo.save(m_logo));
    }
};
