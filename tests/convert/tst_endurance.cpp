// SPDX-License-Identifier: MIT
// Many conversions in one run of the page: what the process holds doesn't grow with them.
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "support/pagetest.h"
#include "support/processload.h"

class TestEndurance : public QObject
{
    Q_OBJECT

private slots:
    void holdsNoMoreAfterMany()
    {
        constexpr int rowsEach = 10;
        constexpr int rounds = 3;
        constexpr int endLimitMs = 120000;
        preparePages();
        PageTest<MediaConvertFunctionPage> test(FunctionSection::converter, 1003005);
        QStringList films;
        for (int i = 0; i < rowsEach; ++i) {
            films += test.folder.filePath("film %1.mp4"_s.arg(i));
            makeClip(films.last(), {0.3, 160, 120, 10});
        }
        QVector<ProcessLoad> loads;
        for (int round = 1; round <= rounds; ++round) {
            test.addRows(films);
            press(*test.page, "btnConvertAll");
            QTRY_COMPARE_WITH_TIMEOUT(test.results().size(), round * rowsEach, endLimitMs);
            QTRY_COMPARE(test.startAllText(), "全部转换"_s);
            test.page->clear();
            // What has ended is cleared away a moment later; the first round sets the measure.
            const auto isAsBefore = [&] {
                const ProcessLoad load = ProcessLoad::now();
                return load.children <= 1 && load.zombies == 0 &&
                       (loads.isEmpty() || (load.descriptors <= loads[0].descriptors &&
                                            load.threads <= loads[0].threads));
            };
            QTRY_VERIFY2(isAsBefore(), qPrintable(described(loads)));
            loads += ProcessLoad::now();
        }
        QVERIFY(entriesOf(test.out()) == test.results());
    }

private:
    static QString described(QVector<ProcessLoad> loads)
    {
        QString text;
        loads += ProcessLoad::now();
        for (const ProcessLoad &load : qAsConst(loads))
            text += "%1 descriptors, %2 threads, %3 children, %4 zombies; "_s.arg(load.descriptors)
                        .arg(load.threads)
                        .arg(load.children)
                        .arg(load.zombies);
        return text;
    }
};

QTEST_MAIN(TestEndurance)
#include "tst_endurance.moc"
