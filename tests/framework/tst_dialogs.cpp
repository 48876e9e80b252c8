// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/historyrecordcovertdialog.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "support/guisupport.h"
#include "support/testfile.h"

#include <QLabel>
#include <QTableWidget>
#include <QtTest>

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void messagesAreAsLargeAsTheirText()
    {
        constexpr int spare = 60;
        QWidget window;
        window.resize(800, 600);
        window.show();
        for (const int length : {1, 5}) {
            int unused = -1;
            whenModal("MediaMessageBox", [&unused](QWidget &box) {
                const auto *label = child<QLabel>(box, "lblText");
                unused = label->height() - label->heightForWidth(label->width());
                press(box, "btnOK");
            });
            MediaMessageBox::showMessage("提示"_s, "一段话，with words, "_s.repeated(length * 4),
                                         &window);
            QVERIFY2(unused >= 0 && unused < spare, qPrintable(QString::number(unused)));
        }
    }

    void historyFillsAndClears()
    {
        HistoryRecord &history = HistoryRecord::instance();
        for (int i = 0; i < HistoryRecord::maxRecords; ++i)
            history.add({"2024.05.06 07:08"_s, {}, "/out/%1.mp4"_s.arg(i)});
        HistoryRecordCovertDialog dialog;
        dialog.show();
        auto *const table = dialog.findChild<QTableWidget *>();
        const int last = table->rowCount() - 1;
        QCOMPARE(last, HistoryRecord::maxRecords - 1);
        QCOMPARE(table->columnWidth(1), 200);
        QTRY_VERIFY(table->cellWidget(last, 2));
        const auto *output = qobject_cast<ElidedLabel *>(table->cellWidget(last, 2));
        QCOMPARE(output->fullText(), "0.mp4"_s);
        QCOMPARE(output->toolTip(), "/out/0.mp4"_s);
        QCOMPARE(output->property("col").toInt(), 3);
        for (const char *answer : {"btnCancel", "btnOK"}) {
            QCOMPARE(table->rowCount(), HistoryRecord::maxRecords);
            whenModal("MediaMessageBox", [answer](QWidget &box) { press(box, answer); });
            press(dialog, "btnClearData");
        }
        QCOMPARE(table->rowCount(), 0);
        QVERIFY(history.records().isEmpty());
    }

    void historyReveals()
    {
        // Stand-in for the desktop: notes what it is asked to open.
        const QTemporaryDir dir;
        const QString opened = dir.filePath("opened"_s);
        writeTestProgram(dir.filePath("xdg-open"_s),
                         "#!/bin/sh\nprintf %s \"$1\" > '" + opened.toUtf8() + "'\n");
        qputenv("PATH", dir.path().toUtf8() + ':' + qgetenv("PATH"));
        HistoryRecord::instance().add({{}, "/gone in/a.mov"_s, "/gone out/a.mp4"_s});
        HistoryRecordCovertDialog dialog;
        dialog.show();
        const auto *table = dialog.findChild<QTableWidget *>();
        QTest::mouseClick(table->cellWidget(0, 2), Qt::LeftButton);
        QTRY_COMPARE(contentOf(opened), QByteArray("/gone out"));
        QTest::mouseClick(table->cellWidget(0, 1), Qt::LeftButton);
        QTRY_COMPARE(contentOf(opened), QByteArray("/gone in"));
    }
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
