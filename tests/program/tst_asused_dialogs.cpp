// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "program/programinuse.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QListWidget>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

namespace {

// Takes the place of all that stands in a field, key by key.
void typeInto(const QWidget &dialog, const char *field, const QString &text)
{
    const QWidget *edit = child(dialog, field);
    // Beside its step buttons; a window that has just come may yet move.
    const auto place = [edit] { return onScreen(*edit).center() - QPoint(edit->width() / 4, 0); };
    QTRY_VERIFY((Desktop::pointTo(place()), edit->underMouse()));
    Desktop::click(place());
    QTRY_VERIFY(edit->hasFocus());
    Desktop::key("ctrl+a");
    Desktop::type(text);
    Desktop::key("Tab");
    QTRY_VERIFY(!edit->hasFocus());
}

QString text(const QWidget &row, const char *label)
{
    return child<QLabel>(row, label)->text();
}

// Whether a row fills the width of its list, so that its last button can be reached.
bool isWithinView(const QWidget &row)
{
    const QRect view = onScreen(*row.parentWidget());
    const QRect button = onScreen(*child(row, "btnDel"));
    return onScreen(row).right() == view.right() && view.contains(button);
}

QColor seenOfRow(const QWidget &row)
{
    return Desktop::seenAt(onScreen(*child(row, "lblVideo")).center());
}

} // namespace

// Dialogs, reached by the pages' own buttons, and what comes of them in the page.
class TestAsUsedDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_program.open(); }
    void cleanupTestCase() { m_program.leave(); }
    void cleanup() { m_program.tidy(); }

    // The import that follows the choice gives the keyboard back.
    void filesByTheKeyboardAlone()
    {
        QVERIFY(m_program.goTo("btnConverter"));
        for (int count = 1; count <= 2; ++count) {
            bool isChosen = false;
            whenModal("QFileDialog", [&](QWidget &) {
                Desktop::type(m_program.film());
                Desktop::key("Return");
                isChosen = true;
            });
            Desktop::key("ctrl+o");
            QTRY_VERIFY_WITH_TIMEOUT(isChosen, ProgramInUse::limitMs);
            const auto *rows = child<QAbstractItemView>(m_program.currentPage(), "convertList");
            QTRY_COMPARE(rows->model()->rowCount(), count);
            QTRY_VERIFY(!QApplication::activeModalWidget());
            QTRY_VERIFY(m_program.window().isActiveWindow());
        }
        // What the pointer comes to first after a dialog, Qt doesn't say to be under it.
        const auto isMet = [this](const char *name) {
            const QWidget *button = child(m_program.currentPage(), name);
            Desktop::pointTo(onScreen(*button).center());
            QTest::qWait(50);
            return button->underMouse();
        };
        QTRY_VERIFY(isMet("btnAddFile") || isMet("btnClear"));
    }

    // A row of the menu lies over a card, which the pointer is on once the row's dialog has gone.
    void cardLetsGoAfterADialog()
    {
        QVERIFY(m_program.goTo("btnHome"));
        const MainWindow &window = m_program.window();
        const QWidget *card = child(window, "btnMediaCut");
        const auto *sheet = card->findChild<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        const QRect resting = sheet->geometry();
        Desktop::click(*child(window, "btnMore"));
        QWidget *menu = nullptr;
        QTRY_VERIFY((menu = visibleWindow("AppMenu")));
        const QWidget &row = *child(*menu, "btnAboutMe");
        QVERIFY(onScreen(*card).contains(onScreen(row).center()));
        ProgramInUse::inDialog(row, "AboutMeDialog", [](QWidget &) { Desktop::key("Escape"); });
        QTRY_VERIFY(sheet->geometry() != resting);
        Desktop::pointTo(onScreen(*child(window, "tiltleBar")).center());
        QTRY_COMPARE(sheet->geometry(), resting);
    }

    void fragmentBecomesARow()
    {
        const QWidget *source = m_program.addFilm("btnCutter", "btnAddItem");
        QVERIFY(source);
        ProgramInUse::inDialog(
            *child(*source, "btnAddItem"), "MutiVideoCutDialog", [](QWidget &dialog) {
                ProgramInUse::awaitColour(dialog, ScreenFilm::firstColour);
                Desktop::key("space");
                typeInto(dialog, "tedtStart", "00:00:08.000"_s);
                typeInto(dialog, "tedtEnd", "00:00:11.000"_s);
                typeInto(dialog, "tedtStart", "00:00:07.000"_s);
                typeInto(dialog, "sbW", "320"_s);
                // The preview shows where it begins, in the frame that was
                // typed.
                ProgramInUse::awaitColour(dialog, ScreenFilm::secondColour);
                const CropFrame frame(dialog);
                QTRY_VERIFY(qAbs(frame.rect().width() - frame.picture().width() / 2) < 3);
                QTRY_VERIFY(frame.isSeen(ScreenFilm::secondColour));
                Desktop::click(*child(dialog, "btnFragmentAdd"));
                const auto *list = child<QListWidget>(dialog, "listWidget");
                QTRY_COMPARE(list->count(), 1);
                QCOMPARE(text(*list->itemWidget(list->item(0)), "lblFromTo"),
                         "00:00:07-00:00:11"_s);
                Desktop::click(*child(dialog, "btnOk"));
                QTRY_VERIFY(!dialog.isVisible());
            });
        const auto *tree = child<QTreeWidget>(m_program.currentPage(), "convertTree");
        QCOMPARE(tree->topLevelItem(0)->childCount(), 1);
        const QWidget *row = tree->itemWidget(tree->topLevelItem(0)->child(0), 0);
        QCOMPARE(text(*row, "lblOutDuration"), "00:00:04"_s);
        QCOMPARE(text(*row, "lblOutRes"), "320x480"_s);
        QTRY_VERIFY(Desktop::isLike(seenOfRow(*row), ScreenFilm::secondColour));
    }

    // Pages of both kinds, one of them hidden meanwhile.
    void rowsFollowTheWindow()
    {
        const auto *maximise = child<QPushButton>(m_program.window(), "btnMax");
        Desktop::click(*maximise);
        QTRY_VERIFY(m_program.window().isMaximized());
        const QWidget *listed = m_program.addFilm("btnConverter");
        const QWidget *source = m_program.addFilm("btnCutter", "btnAddItem");
        QVERIFY(listed && source);
        ProgramInUse::inDialog(*child(*source, "btnAddItem"), "MutiVideoCutDialog",
                               [](QWidget &dialog) {
                                   Desktop::click(*child(dialog, "btnFragmentAdd"));
                                   Desktop::click(*child(dialog, "btnOk"));
                                   QTRY_VERIFY(!dialog.isVisible());
                               });
        const auto *tree = child<QTreeWidget>(m_program.currentPage(), "convertTree");
        const QWidget *fragment = tree->itemWidget(tree->topLevelItem(0)->child(0), 0);
        QTRY_VERIFY(isWithinView(*source) && isWithinView(*fragment));
        const int wide = fragment->width();
        Desktop::click(*maximise);
        QTRY_VERIFY(fragment->width() < wide);
        QTRY_VERIFY(isWithinView(*source) && isWithinView(*fragment));
        QVERIFY(m_program.goTo("btnConverter"));
        QTRY_VERIFY(isWithinView(*listed));
        // Back to the large size, and again hidden while the window shrinks.
        Desktop::click(*maximise);
        QTRY_VERIFY(m_program.window().isMaximized() && isWithinView(*listed));
        QVERIFY(m_program.goTo("btnCutter"));
        QTRY_COMPARE(fragment->width(), wide);
        QVERIFY(m_program.goTo("btnConverter"));
        Desktop::click(*maximise);
        QTRY_VERIFY(!m_program.window().isMaximized());
        QTRY_VERIFY(isWithinView(*listed));
        m_program.tidy();
        QVERIFY(m_program.goTo("btnCutter"));
        QTRY_VERIFY(isWithinView(*source) && isWithinView(*fragment));
    }

    void mergedPartIsCut()
    {
        QVERIFY(m_program.addFilm("btnMerger", "btnCutSettting"));
        const QWidget *row = m_program.addFilm("btnMerger", "btnCutSettting");
        QVERIFY(row);
        for (const bool again : {false, true}) {
            ProgramInUse::inDialog(
                *child(*row, "btnCutSettting"), "VideoCutDialog", [again](QWidget &dialog) {
                    ProgramInUse::awaitFilm(dialog);
                    Desktop::key("space");
                    if (again) {
                        QCOMPARE(child<QAbstractSpinBox>(dialog, "tedtEnd")->text(),
                                 "00:00:05.500"_s);
                        return;
                    }
                    typeInto(dialog, "tedtEnd", "00:00:05.500"_s);
                    typeInto(dialog, "tedtStart", "00:00:02.000"_s);
                    ProgramInUse::awaitColour(dialog, ScreenFilm::firstColour);
                    const CropFrame frame(dialog);
                    Desktop::drag(frame.rect().bottomRight() - QPoint(1, 1), frame.rect().center());
                    QTRY_VERIFY(frame.isSeen(ScreenFilm::firstColour));
                    Desktop::click(*child(dialog, "btnSave"));
                    QTRY_VERIFY(!dialog.isVisible());
                });
            QCOMPARE(text(*row, "lblOutFromTo"), "00:00:02-00:00:05"_s);
            QVERIFY(child(*row, "lblOutFromTo")->isVisible());
            QVERIFY(text(*row, "lblOutSize").contains(QRegularExpression("^3\\d\\dx2\\d\\d$"_s)));
        }
    }

    void sizeIsAskedFor()
    {
        const QString rich = m_program.path("rich.mp4"_s);
        makeMedia("-f lavfi -i testsrc2=s=640x480:r=25:d=4 -f lavfi -i sine=d=4 -pix_fmt yuv420p "
                  "-preset ultrafast -b:v 4M -minrate 4M -maxrate 4M -bufsize 4M @"_s,
                  {rich});
        const QWidget *row = m_program.addFilm("btnCompressor", "btnConvert", rich);
        QVERIFY(row);
        double asked = 0;
        ProgramInUse::inDialog(*child(*row, "btnCompressSet"), "CompressSettingsDialog",
                               [&asked](QWidget &dialog) {
                                   const auto *size = child<QDoubleSpinBox>(dialog, "sbSize");
                                   const int handle = child<QSlider>(dialog, "slider")->value();
                                   asked = std::round(size->maximum() * 60) / 100;
                                   typeInto(dialog, "sbSize", QString::number(asked, 'f', 2));
                                   QTRY_VERIFY(child<QSlider>(dialog, "slider")->value() != handle);
                                   Desktop::click(*child(dialog, "btnOK"));
                                   QTRY_VERIFY(!dialog.isVisible());
                               });
        QCOMPARE(text(*row, "lblOutSize"), "%1 MB"_s.arg(asked, 0, 'f', 2));
    }

    void historyIsKeptUntilAgreed()
    {
        const QString told = showsFoldersIn("shown"_s);
        const QWidget *row = m_program.addFilm("btnConverter");
        QVERIFY(row);
        Desktop::click(*child(*row, "btnConvert"));
        QTRY_COMPARE_WITH_TIMEOUT(child<QStackedWidget>(*row, "swdtState")->currentIndex(), 2,
                                  4 * ProgramInUse::limitMs);
        QTRY_VERIFY(ProgramInUse::preview());
        ProgramInUse::clickToastAway();
        Desktop::click(*child(*ProgramInUse::preview(), "btnClose"));

        const QWidget &history = *child(m_program.currentPage(), "btnHistory");
        ProgramInUse::inDialog(history, "HistoryRecordCovertDialog", [&](QWidget &dialog) {
            const auto *table = child<QTableWidget>(dialog, "tableWidget");
            QCOMPARE(table->rowCount(), 1);
            constexpr int outputColumn = 2;
            QTRY_VERIFY(table->cellWidget(0, outputColumn));
            Desktop::click(*table->cellWidget(0, outputColumn));
            QTRY_COMPARE(contentOf(told), QFile::encodeName(m_program.path("out"_s)));
            for (const bool agrees : {false, true}) {
                bool isAsked = false;
                whenModal("MediaMessageBox", [&](QWidget &question) {
                    const QPoint title = onScreen(*child(question, "lblTitle")).center();
                    QTRY_VERIFY(question.isActiveWindow());
                    QTRY_VERIFY(Desktop::isLike(Desktop::seenAt(title), Qt::white));
                    Desktop::key(agrees ? "Return" : "Escape");
                    isAsked = true;
                });
                Desktop::click(*child(dialog, "btnClearData"));
                QTRY_VERIFY(isAsked);
                QTRY_COMPARE(QApplication::activeModalWidget(), &dialog);
                QTRY_COMPARE(table->rowCount() == 0, agrees);
            }
            QTRY_VERIFY(dialog.isActiveWindow() && Desktop::hasKeyboard(dialog));
            Desktop::key("Escape");
            QTRY_VERIFY(!dialog.isVisible());
        });
        QTRY_VERIFY(HistoryRecord().records().isEmpty());
    }

private:
    // Stands in for the desktop's file manager, which has no place here, and writes down what it
    // is asked to show.
    QString showsFoldersIn(const QString &name) const
    {
        const QString told = m_program.path(name);
        writeTestProgram(m_program.path("bin/xdg-open"_s),
                         "printf %s \"$1\" >" + QFile::encodeName(told));
        qputenv("PATH", QFile::encodeName(m_program.path("bin"_s)) + ':' + qgetenv("PATH"));
        return told;
    }

    ProgramInUse m_program;
};

int main(int argc, char *argv[])
{
    TestAsUsedDialogs test;
    return runInProgram(argc, argv, test);
}

#include "tst_asused_dialogs.moc"
