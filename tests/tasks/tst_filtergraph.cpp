// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/filtergraph.h"
#include "support/utf8.h"

#include <QColor>
#include <QFileInfo>
#include <QFont>
#include <QtTest>

namespace {

QVariantMap named(const char *filter, QVariantMap keys)
{
    return FilterGraph::filter(QLatin1String(filter), std::move(keys));
}

} // namespace

class TestFilterGraph : public QObject
{
    Q_OBJECT

private slots:
    void optionOrder();
    void values();
    void valuesAndLabels();
    void fontIsItsFile();
    void throwsForOtherThanMaps();
    void escapes();
};

// What ffmpeg's users expect first comes first, the rest sorted behind it.
void TestFilterGraph::optionOrder()
{
    QStringList orders;
    for (const char *order :
         {"overlay x y enable format shortest", "crop w h x y enable exact keep_aspect",
          "scale w h enable flags", "lut a b enable c0",
          "eq contrast brightness saturation enable gamma",
          "colorbalance bh bm bs gh gm gs rh rm rs pl enable", "delogo x y w h enable show",
          "drawtext font fontfile fontsize fontcolor alpha y x text enable box",
          "setsar sar dar enable max", "pad width height x y enable color",
          "adelay delays all enable", "volume volume precision enable eval",
          "amix inputs duration dropout_transition enable weights", "unknown a enable x y"})
        orders += QLatin1String(order);
    for (const char *filter : {"split", "movie", "setpts", "trim", "reverse", "vflip", "hflip",
                               "atempo", "areverse", "amovie"})
        orders += QLatin1String(filter) + QLatin1String(" enable a z");
    for (const QString &order : qAsConst(orders)) {
        QStringList keys = order.split(QLatin1Char(' '));
        const QString name = keys.takeFirst();
        QVariantMap options;
        for (const QString &key : qAsConst(keys))
            options.insert(key, 1);
        QCOMPARE(FilterGraph::filterText(FilterGraph::filter(name, options)),
                 name + QLatin1Char('=') + keys.join(QLatin1String("=1:")) + QLatin1String("=1"));
    }
}

void TestFilterGraph::values()
{
    const struct
    {
        QVariant value;
        const char *text;
    } rows[] = {
        {utf8("a:b 文"), "f=k=a:b 文"},
        {-12345678, "f=k=-12345678"},
        {1234567.0, "f=k=1.23457e+06"},
        {1.1F, "f=k=1.1"},
        {7U, "f=k=7"},
        {QColor(1, 255, 3, 4), "f=k=0x01ff03"},
        {QVariantList(), "f=k="},
        {QVariant(), "f=k"},
        {QFont(QStringLiteral("No Such Family")), "f=k="},
    };
    for (const auto &row : rows) {
        const QVariantMap filter = named("f", {{QStringLiteral("k"), row.value}});
        QCOMPARE(FilterGraph::filterText(filter), utf8(row.text));
    }
}

void TestFilterGraph::valuesAndLabels()
{
    const QStringList two{QStringLiteral("a"), QStringLiteral("b")};
    QVariantMap filter{{QStringLiteral("__inputs"), two},
                       {QStringLiteral("__outputs"), two},
                       {QStringLiteral("__note"), 1},
                       {QStringLiteral("_k"), 2}};
    QCOMPARE(FilterGraph::filterText(named("f", filter)), QStringLiteral("[a][b]f=_k=2[a][b]"));
    filter.insert(QStringLiteral("value"), 3);
    QCOMPARE(FilterGraph::filterText(named("f", filter)), QStringLiteral("[a][b]f=3[a][b]"));
}

void TestFilterGraph::fontIsItsFile()
{
    const QString text = FilterGraph::filterText(
        named("drawtext", {{QStringLiteral("fontfile"), QFont(QStringLiteral("DejaVu Sans"))}}));
    const QString path = text.section(QStringLiteral("drawtext=fontfile="), 1);
    QVERIFY2(path.endsWith(QLatin1String("/DejaVuSans.ttf")), qPrintable(text));
    QVERIFY(QFileInfo(path).isFile());
}

void TestFilterGraph::throwsForOtherThanMaps()
{
    FilterGraph graph(QStringLiteral("vrt"));
    graph.addChain({named("hflip", {}), QStringLiteral("vflip")}, {}, {});
    try {
        const QString text = graph.toString();
        QFAIL(qPrintable(text));
    } catch (const FFmpegFilterGraphException &exception) {
        QCOMPARE(exception.message(), QStringLiteral("非map类型"));
        QCOMPARE(utf8(exception.what()), exception.message());
    }
}

void TestFilterGraph::escapes()
{
    const struct
    {
        QString (*escape)(const QString &);
        const char *text;
        const char *escaped;
    } rows[] = {
        {escapeFilterValue, R"(a\b,c:d)", R"(a\\b\,c\:d)"},
        {escapeFilterValue, R"('文' "x";[y]{z}%=)", R"('文' "x";[y]{z}%=)"},
        {quoteFilterPath, R"(D:\x,b.png)", R"('D\:\\x\,b.png')"},
        {escapeDrawtextText, R"(\:\,)", R"(\\\\\\\\\\:\\\\\\\\\,)"},
        {escapeDrawtextText, R"('"a";[]{})", R"(\\\'"""a"""\;\[\]\{\})"},
        {escapeDrawtextText, "100% =\n墨泉", "100% =\n墨泉"},
        {escapePreviewValue, R"(C:\a,b;c)", R"(C\\:\\a\\,b\\;c)"},
        {escapePreviewValue, R"('文'"[]{}%)", R"('文'"[]{}%)"},
        {escapePreviewText, R"(a\b,:)", R"(a \\\\\\\\\\\\\\\\b\\,\\\\:)"},
        {escapePreviewText, ";[]{}'\"", R"(\\;\\[\\]\\{\\}\\\\\\'\\\")"},
        {escapePreviewText, "\r\n\t\v%=墨", R"(\\\r\\\n\\\t\\\v%=墨)"},
    };
    for (const auto &row : rows)
        QCOMPARE(row.escape(utf8(row.text)), utf8(row.escaped));
}

QTEST_GUILESS_MAIN(TestFilterGraph)
#include "tst_filtergraph.moc"
