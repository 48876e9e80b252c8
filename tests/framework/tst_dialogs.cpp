// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/historyrecordcovertdialog.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/convertspeedswitchmenu.h"
#include "support/guisupport.h"
#include "support/testfile.h"

#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void speedMenu();
    void messageBox();
    void historyFillsAndClears();
    void historyReveals();
};

void TestDialogs::speedMenu()
{
    const QPointer<ConvertSpeedSwitchMenu> menu = new ConvertSpeedSwitchMenu;
    QSignalSpy changed(menu, &ConvertSpeedSwitchMenu::speedTypeChanged);
    menu->setSpeedType(ConvertSpeedSwitchMenu::FastSpeed);
    QVERIFY(menu->findChild<QRadioButton *>(QStringLiteral("rbtnFast"))->isChecked());
    QVERIFY(changed.isEmpty());
    menu->show();
    QTest::mouseClick(menu->findChild<QRadioButton *>(QStringLiteral("rbtnNormal")),
                      Qt::LeftButton);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), int(ConvertSpeedSwitchMenu::NormalSpeed));
    QTRY_VERIFY(!menu);
}

void TestDialogs::messageBox()
{
    const QString title = QStringLiteral("标题");
    const QString text = QStringLiteral("<b>文本");
    for (const char *button : {"btnOK", "btnClose"}) {
        bool shown = false;
        QTimer::singleShot(0, this, [&] {
            auto *box = qobject_cast<MediaMessageBox *>(QApplication::activeModalWidget());
            shown = box->windowTitle() == title && box->text() == text;
            QTest::mouseClick(box->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
        });
        MediaMessageBox::showMessage(title, text, nullptr);
        QVERIFY(shown);
    }
    QCOMPARE(MediaFormatSetTipsDialog().title(), QStringLiteral("提示"));
}

void TestDialogs::historyFillsAndClears()
{
    HistoryRecord &history = HistoryRecord::instance();
    for (int i = 0; i < HistoryRecord::maxRecords; ++i)
        history.add({QStringLiteral("2024.05.06 07:08"), {}, QStringLiteral("/out/%1.mp4").arg(i)});
    HistoryRecordCovertDialog dialog;
    dialog.show();
    auto *const table = dialog.findChild<QTableWidget *>();
    const int last = table->rowCount() - 1;
    QCOMPARE(last, HistoryRecord::maxRecords - 1);
    QCOMPARE(table->columnWidth(1), 200);
    QTRY_VERIFY(table->cellWidget(last, 2));
    const auto *output = qobject_cast<ElidedLabel *>(table->cellWidget(last, 2));
    QCOMPARE(output->fullText(), QStringLiteral("0.mp4"));
    QCOMPARE(output->toolTip(), QStringLiteral("/out/0.mp4"));
    QCOMPARE(output->property("col").toInt(), 3);
    for (const char *answer : {"btnCancel", "btnOK"}) {
        QCOMPARE(table->rowCount(), HistoryRecord::maxRecords);
        whenModal("MediaMessageBox", [answer](QWidget &box) { press(box, answer); });
        press(dialog, "btnClearData");
    }
    QCOMPARE(table->rowCount(), 0);
    QVERIFY(history.records().isEmpty());
}

void TestDialogs::historyReveals()
{
    // Stand-in for the desktop: notes what it is asked to open.
    const QTemporaryDir dir;
    const QString opened = dir.filePath(QStringLiteral("opened"));
    writeTestProgram(dir.filePath(QStringLiteral("xdg-open")),
                     "#!/bin/sh\nprintf %s \"$1\" > '" + opened.toUtf8() + "'\n");
    qputenv("PATH", dir.path().toUtf8() + ':' + qgetenv("PATH"));
    HistoryRecord::instance().add(
        {{}, QStringLiteral("/gone in/a.mov"), QStringLiteral("/gone out/a.mp4")});
    HistoryRecordCovertDialog dialog;
    dialog.show();
    const auto *table = dialog.findChild<QTableWidget *>();
    const auto content = [&opened] {
        QFile file(opened);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    QTest::mouseClick(table->cellWidget(0, 2), Qt::LeftButton);
    QTRY_COMPARE(content(), QStringLiteral("/gone out"));
    QTest::mouseClick(table->cellWidget(0, 1), Qt::LeftButton);
    QTRY_COMPARE(content(), QStringLiteral("/gone in"));
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
