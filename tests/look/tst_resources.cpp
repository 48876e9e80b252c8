// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "resources/look.h"
#include "support/utf8.h"

#include <QApplication>
#include <QtTest>
#include <QWidget>

#include <cmath>

namespace {

// Why a picture of the program can't be shown sharply at both scales; empty when it can.
QString faultOf(const QString &path)
{
    QString doublePath = path;
    doublePath.replace(".png"_s, "@2x.png"_s);
    const QImage single(path);
    const QImage twice(doublePath);
    if (single.isNull() || twice.isNull())
        return path + " is missing"_s;
    return twice.size() == 2 * single.size() ? QString() : path + " isn't doubled"_s;
}

} // namespace

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

class TstResources : public QObject
{
    Q_OBJECT

private slots:
    void sourcesNameOnlyExistingPictures()
    {
        static const QRegularExpression name(":/[a-z_/]+\\.png"_s);
        QStringList faults;
        int count = 0;
        QDirIterator walk(QStringLiteral(MORVANE_SOURCE_DIR "/src"),
                          {"*.ui"_s, "*.cpp"_s, "*.qss"_s}, QDir::Files,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            QFile file(walk.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            auto matches = name.globalMatch(QString::fromUtf8(file.readAll()));
            for (; matches.hasNext(); ++count) {
                const QString fault = faultOf(matches.next().captured());
                if (!fault.isEmpty())
                    faults += walk.fileName() + ": "_s + fault;
            }
        }
        QVERIFY(count > 0);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }

    void everyCategoryHasItsPicture()
    {
        const EncParamCatalog &catalogue = EncParamCatalog::instance();
        QVERIFY(!catalogue.categoryIds().isEmpty());
        for (const quint32 id : catalogue.categoryIds()) {
            const auto category = catalogue.category(id);
            const QString fault = faultOf(":/format/%1/%2.png"_s.arg(
                category->type == 1 ? "video"_s : "audio"_s, category->icon));
            QVERIFY2(fault.isEmpty(), qPrintable(fault));
        }
    }

    // Qt warns of what it can't parse and of properties it doesn't know when the first widget asks.
    void styleSheetParses()
    {
        static QStringList messages;
        const QtMessageHandler before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { messages += text; });
        const bool applied = Look::apply();
        QWidget window;
        window.ensurePolished();
        qInstallMessageHandler(before);
        QVERIFY(applied);
        QVERIFY2(messages.isEmpty(), qPrintable(messages.join(u'\n')));
    }

    // Each rule's text on its own ground, or else on that of cards and windows.
    void textStandsOutFromItsGround()
    {
        constexpr double least = 4.5;
        static const QRegularExpression rule("([^{}]+)\\{([^{}]*)\\}"_s);
        static const QRegularExpression text("(?<![-\\w])color: (#\\w{6})"_s);
        static const QRegularExpression ground("(?<![-\\w])background: (#\\w{6})"_s);
        QFile file(":/qss/app.qss"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QStringList faults;
        int count = 0;
        auto rules = rule.globalMatch(QString::fromUtf8(file.readAll()));
        while (rules.hasNext()) {
            const auto match = rules.next();
            const QString selector = match.captured(1).trimmed();
            QColor colour(text.match(match.captured(2)).captured(1));
            // The states of a filled button change its ground alone.
            if (!colour.isValid() && selector.contains("primary"_s))
                colour = Qt::white;
            QVector<QColor> grounds{QColor(ground.match(match.captured(2)).captured(1))};
            if (!grounds.first().isValid() && colour != Qt::white)
                grounds = {Qt::white, QColor(0xf5, 0xf6, 0xf8)};
            if (!colour.isValid() || selector.contains(":disabled"_s))
                continue;
            for (const QColor &below : qAsConst(grounds)) {
                if (below.isValid() && ++count > 0 && contrast(colour, below) < least)
                    faults += selector;
            }
        }
        const QPalette palette = QApplication::palette();
        for (const auto role : {QPalette::PlaceholderText, QPalette::Link, QPalette::Text}) {
            if (contrast(palette.color(role), palette.color(QPalette::Base)) < least)
                faults += "palette %1"_s.arg(role);
        }
        if (contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)) <
            least)
            faults += "palette's selection"_s;
        QVERIFY(count > 20);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }

    void chineseTextsOfQt()
    {
        QTranslator translator;
        QVERIFY(translator.load(":/languages/qm/qt_zh_CN.qm"_s));
        QCOMPARE(translator.translate("QPlatformTheme", "Cancel"), "取消"_s);
        QVERIFY(!translator.translate("QFileDialog", "File &name:").isEmpty());
    }
};

QTEST_MAIN(TstResources)
#include "tst_resources.moc"
