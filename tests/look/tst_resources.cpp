// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "resources/look.h"

#include <QApplication>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QWidget>

class TstResources : public QObject
{
    Q_OBJECT

private slots:
    void sourcesNameOnlyExistingPictures();
    void everyCategoryHasItsPicture();
    void styleSheetParses();
    void chineseTextsOfQt();
};

namespace {

// Why a picture of the program can't be shown sharply at both scales; empty when it can.
QString faultOf(const QString &path)
{
    QString doublePath = path;
    doublePath.replace(QLatin1String(".png"), QLatin1String("@2x.png"));
    const QImage single(path);
    const QImage twice(doublePath);
    if (single.isNull() || twice.isNull())
        return path + QLatin1String(" is missing");
    return twice.size() == 2 * single.size() ? QString() : path + QLatin1String(" isn't doubled");
}

} // namespace

void TstResources::sourcesNameOnlyExistingPictures()
{
    static const QRegularExpression name(QStringLiteral(":/[a-z_/]+\\.png"));
    QStringList faults;
    int count = 0;
    QDirIterator walk(QStringLiteral(MORVANE_SOURCE_DIR "/src"),
                      {QStringLiteral("*.ui"), QStringLiteral("*.cpp"), QStringLiteral("*.qss")},
                      QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        auto matches = name.globalMatch(QString::fromUtf8(file.readAll()));
        for (; matches.hasNext(); ++count) {
            const QString fault = faultOf(matches.next().captured());
            if (!fault.isEmpty())
                faults += walk.fileName() + QLatin1String(": ") + fault;
        }
    }
    QVERIFY(count > 0);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
}

void TstResources::everyCategoryHasItsPicture()
{
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    QVERIFY(!catalogue.categoryIds().isEmpty());
    for (const quint32 id : catalogue.categoryIds()) {
        const auto category = catalogue.category(id);
        const QString fault = faultOf(
            QStringLiteral(":/format/%1/%2.png")
                .arg(category->type == 1 ? QStringLiteral("video") : QStringLiteral("audio"),
                     category->icon));
        QVERIFY2(fault.isEmpty(), qPrintable(fault));
    }
}

// Qt warns of what it can't parse and of properties it doesn't know when the first widget asks.
void TstResources::styleSheetParses()
{
    static QStringList messages;
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { messages += text; });
    const bool applied = Look::apply();
    QWidget window;
    window.ensurePolished();
    qInstallMessageHandler(before);
    QVERIFY(applied);
    QVERIFY2(messages.isEmpty(), qPrintable(messages.join(QLatin1Char('\n'))));
}

void TstResources::chineseTextsOfQt()
{
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/languages/qm/qt_zh_CN.qm")));
    QCOMPARE(translator.translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    QVERIFY(!translator.translate("QFileDialog", "File &name:").isEmpty());
}

QTEST_MAIN(TstResources)
#include "tst_resources.moc"
