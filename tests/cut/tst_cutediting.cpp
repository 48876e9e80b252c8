// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"
#include "controls/interceptslider.h"
#include "cut/cutfields.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "support/casename.h"
#include "support/pagetest.h"

#include <QDialog>
#include <QtTest>

namespace {

constexpr quint32 mp4AsSource = 1003001;
constexpr int filmMs = 90000;
constexpr QSize pictureSize(320, 240);

// Replaces all that stands in a field, key by key.
void typeInto(const QWidget &dialog, const char *field, const QString &text)
{
    child(dialog, field)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

QString hint(const QWidget &dialog)
{
    const auto *label = child<ElidedLabel>(dialog, "lblHint");
    return label && label->isVisible() ? label->fullText() : QString();
}

// The convert page with one film, whose row opens the editor.
struct EditorTest : PageTest<MediaConvertFunctionPage>
{
    explicit EditorTest(const QString &film) : PageTest(FunctionSection::converter, mp4AsSource)
    {
        add({film});
        ready = QTest::qWaitFor([this] {
            return list()->count() == 1 && child(*row(0), "btnCut") &&
                   child(*row(0), "btnCut")->isEnabled();
        });
    }
    /// Opens the editor by the row's button, modally, for `act`, which has to end it.
    template<class Act>
    void edit(Act act)
    {
        bool opened = false;
        whenModal("VideoCutDialog", [&](QWidget &dialog) {
            opened = QTest::qWaitFor([&] { return dialog.isActiveWindow(); });
            act(dialog);
            // After a check that failed, too.
            if (dialog.isVisible())
                qobject_cast<QDialog *>(&dialog)->done(QDialog::Rejected);
        });
        press(*row(0), "btnCut");
        QVERIFY(opened);
    }
    ConvertTaskParam &param() const { return PageTest::param(0); }

    bool ready = false;
};

} // namespace

// What is typed, caught and dragged in the editor as its user opens it.
class TestCutEditing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeClip(m_film, {filmMs / 1000.0, pictureSize.width(), pictureSize.height(), 5, 0});
    }

    void typedTime()
    {
        const auto check = [&](const char *caseName, const char *field, QString typed,
                               int startSeconds, int endSeconds, bool hinted) {
            const CaseName inCase(caseName);
            const int start = startSeconds * 1000;
            const int end = endSeconds * 1000;
            EditorTest test(m_film);
            QVERIFY(test.ready);
            test.edit([&](QWidget &dialog) {
                setTime(dialog, "tedtStart", 10000);
                setTime(dialog, "tedtEnd", 60000);
                typeInto(dialog, field, typed);
                // Nothing is decided before the typing ends: all digits stand as they were typed.
                QString shown = child<QTimeEdit>(dialog, field)->text();
                QCOMPARE(shown.remove(QRegularExpression("[:.]"_s)),
                         typed.remove(QRegularExpression("[:.]"_s)));
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                QCOMPARE(timeOf(dialog, "tedtStart"), start);
                QCOMPARE(timeOf(dialog, "tedtEnd"), end);
                const auto *bar = dialog.findChild<InterceptSlider *>();
                QCOMPARE(bar->leftValue(), timeOf(dialog, "tedtStart"));
                QCOMPARE(bar->rightValue(), timeOf(dialog, "tedtEnd"));
                QCOMPARE(!hint(dialog).isEmpty(), hinted);
                press(dialog, "btnSave");
            });
            QVERIFY(test.param().timeRange);
            QCOMPARE(test.param().timeRange->start, start);
            QCOMPARE(test.param().timeRange->end, end);
        };
        // From 10 to 60 of 90 seconds.
        check("end, its minutes first", "tedtEnd", "00:00:20.000"_s, 10, 20, false);
        check("start, beyond the end for a while", "tedtStart", "00:00:40.000"_s, 40, 60, false);
        check("without separators", "tedtEnd", "000115000"_s, 10, 75, false);
        check("start behind the end", "tedtStart", "00:01:10.000"_s, 70, 90, true);
        check("end before the start", "tedtEnd", "00:00:05.000"_s, 0, 5, true);
        check("end behind the film", "tedtEnd", "00:02:00.000"_s, 10, 90, true);
        check("start behind the film", "tedtStart", "00:02:00.000"_s, 10, 60, true);
    }

    void typedTimeCountsAtTheButton()
    {
        EditorTest test(m_film);
        test.edit([](QWidget &dialog) {
            typeInto(dialog, "tedtEnd", "00:00:50.000"_s);
            typeInto(dialog, "tedtStart", "00:01:10.000"_s);
            // What comes out of it is shown before it is taken.
            press(dialog, "btnSave");
            QVERIFY(dialog.isVisible());
            QVERIFY(!hint(dialog).isEmpty());
            QCOMPARE(timeOf(dialog, "tedtEnd"), filmMs);
            shoot(dialog, "cut_hint");
            typeInto(dialog, "tedtStart", "00:00:30.000"_s);
            press(dialog, "btnSave");
            QVERIFY(!dialog.isVisible());
        });
        QVERIFY(test.param().timeRange);
        QCOMPARE(test.param().timeRange->start, 30000);
        QCOMPARE(test.param().timeRange->end, filmMs);
    }

    void typedNumber()
    {
        const auto check = [&](const char *caseName, const QByteArray &field, const QString &typed,
                               const QRect &box, bool hinted) {
            const CaseName inCase(caseName);
            EditorTest test(m_film);
            test.edit([&](QWidget &dialog) {
                setBox(dialog, {57, 31, 100, 90});
                typeInto(dialog, field.constData(), typed);
                QCOMPARE(child<QSpinBox>(dialog, field.constData())->text(), typed);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                QCOMPARE(boxOf(dialog), box);
                QCOMPARE(!hint(dialog).isEmpty(), hinted);
                // A number that was typed on the way is none that counts.
                typeInto(dialog, "sbX", "300"_s);
                for (int i = 0; i < 3; ++i)
                    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
                QTest::keyClicks(QApplication::focusWidget(), QString::number(0));
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                QCOMPARE(boxOf(dialog).width(), box.width());
                press(dialog, "btnSave");
            });
            QVERIFY(test.param().cropRect);
            QVERIFY(
                QRect(QPoint(0, 0), pictureSize)
                    .contains(QRect(test.param().cropRect->x, test.param().cropRect->y,
                                    test.param().cropRect->width, test.param().cropRect->height)));
        };
        // From a box of 100x90 at 57, 31 in 320x240.
        check("fits", QByteArray("sbW"), "120"_s, QRect(57, 31, 120, 90), false);
        check("width pushes x", QByteArray("sbW"), "300"_s, QRect(20, 31, 300, 90), true);
        check("x pushes width", QByteArray("sbX"), "300"_s, QRect(300, 31, 20, 90), true);
        check("wider than the picture", QByteArray("sbW"), "3000"_s, QRect(0, 31, 320, 90), true);
        check("y below the picture", QByteArray("sbY"), "500"_s, QRect(57, 239, 100, 1), true);
    }

    void caughtPointsLeaveALength()
    {
        EditorTest test(m_film);
        test.edit([](QWidget &dialog) {
            const auto key = [](Qt::Key code) {
                QTest::keyClick(QApplication::focusWidget(), code);
            };
            auto *bar = dialog.findChild<InterceptSlider *>();
            const auto seek = [bar](int ms) {
                bar->setValue(ms);
                emit bar->sliderMoved(ms);
            };
            key(Qt::Key_Space);
            setTime(dialog, "tedtEnd", 20000);
            seek(50000);
            key(Qt::Key_I);
            QCOMPARE(timeOf(dialog, "tedtStart"), 50000);
            QCOMPARE(timeOf(dialog, "tedtEnd"), filmMs);
            QVERIFY(!hint(dialog).isEmpty());
            seek(30000);
            key(Qt::Key_O);
            QCOMPARE(timeOf(dialog, "tedtStart"), 0);
            QCOMPARE(timeOf(dialog, "tedtEnd"), 30000);
            // Nothing begins where the film ends, and nothing ends where it begins.
            seek(filmMs);
            key(Qt::Key_I);
            QCOMPARE(timeOf(dialog, "tedtStart"), 0);
            seek(0);
            key(Qt::Key_O);
            QCOMPARE(timeOf(dialog, "tedtEnd"), 30000);
            QVERIFY(!hint(dialog).isEmpty());
            // Nor do handles that touch leave nothing between them.
            const QPoint right = child(dialog, "rightslider")->geometry().center();
            const QPoint left = child(dialog, "leftslider")->geometry().center();
            const int room = right.x() - left.x() - child(dialog, "leftslider")->width();
            const QPoint place = bar->mapToParent(right);
            dragWidget(bar, place, {place - QPoint(room, 0)});
            QVERIFY(timeOf(dialog, "tedtEnd") > timeOf(dialog, "tedtStart"));
            QVERIFY(timeOf(dialog, "tedtEnd") < 5000);
            press(dialog, "btnSave");
        });
        QVERIFY(test.param().timeRange);
        QVERIFY(test.param().timeRange->end > test.param().timeRange->start);
    }

    void reopenedSpanBeginsAtItsStart()
    {
        EditorTest test(m_film);
        test.edit([](QWidget &dialog) {
            setTime(dialog, "tedtEnd", 60000);
            press(dialog, "btnSave");
        });
        test.edit([](QWidget &dialog) {
            QCOMPARE(timeOf(dialog, "tedtEnd"), 60000);
            QVERIFY(dialog.findChild<InterceptSlider *>()->value() < 30000);
            press(dialog, "btnCancel");
        });
    }

private:
    QTemporaryDir m_media;
    QString m_film = m_media.filePath("film.mp4"_s);
};

QTEST_MAIN(TestCutEditing)
#include "tst_cutediting.moc"
