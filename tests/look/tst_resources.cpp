// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "resources/look.h"

#include <QApplication>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QWidget>

#include <cmath>

class TstResources : public QObject
{
    Q_OBJECT

private slots:
    void sourcesNameOnlyExistingPictures();
    void everyCategoryHasItsPicture();
    void styleSheetParses();
    void textStandsOutFromItsGround();
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

// As WCAG 2 defines it.
static double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

static double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

// Each rule's text on its own ground, or else on that of cards and windows.
void TstResources::textStandsOutFromItsGround()
{
    constexpr double least = 4.5;
    static const QRegularExpression rule(QStringLiteral("([^{}]+)\\{([^{}]*)\\}"));
    static const QRegularExpression text(QStringLiteral("(?<![-\\w])color: (#\\w{6})"));
    static const QRegularExpression ground(QStringLiteral("(?<![-\\w])background: (#\\w{6})"));
    QFile file(QStringLiteral(":/qss/app.qss"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList faults;
    int count = 0;
    auto rules = rule.globalMatch(QString::fromUtf8(file.readAll()));
    while (rules.hasNext()) {
        const auto match = rules.next();
        const QString selector = match.captured(1).trimmed();
        QColor colour(text.match(match.captured(2)).captured(1));
        // The states of a filled button change its ground alone.
        if (!colour.isValid() && selector.contains(QLatin1String("primary")))
            colour = Qt::white;
        QVector<QColor> grounds{QColor(ground.match(match.captured(2)).captured(1))};
        if (!grounds.first().isValid() && colour != Qt::white)
            grounds = {Qt::white, QColor(0xf5, 0xf6, 0xf8)};
        if (!colour.isValid() || selector.contains(QLatin1String(":disabled")))
            continue;
        for (const QColor &below : qAsConst(grounds)) {
            if (below.isValid() && ++count > 0 && contrast(colour, below) < least)
                faults += selector;
        }
    }
    const QPalette palette = QApplication::palette();
    for (const auto role : {QPalette::PlaceholderText, QPalette::Link, QPalette::Text}) {
        if (contrast(palette.color(role), palette.color(QPalette::Base)) < least)
            faults += QStringLiteral("palette %1").arg(role);
    }
    if (contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)) <
        least)
        faults += QStringLiteral("palette's selection");
    QVERIFY(count > 20);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
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
