// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/filtergraph.h"
#include "support/utf8.h"

#include <QColor>
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
    void values();
    void valuesAndLabels();
    void fontIsItsFile();
    void throwsForOtherThanMaps();
    void escapes();
};

void TestFilterGraph::values()
{
    const struct
    {
        QVariant value;
        const char *text;
    } rows[] = {
        {"a:b 文"_s, "f=k=a:b 文"},
        {-12345678, "f=k=-12345678"},
        {1234567.0, "f=k=1.23457e+06"},
        {1.1F, "f=k=1.1"},
        {7U, "f=k=7"},
        {QColor(1, 255, 3, 4), "f=k=0x01ff03"},
        {QVariantList(), "f=k="},
        {QVariant(), "f=k"},
        {QFont("No Such Family"_s), "f=k="},
    };
    for (const auto &row : rows) {
        const QVariantMap filter = named("f", {{"k"_s, row.value}});
        QCOMPARE(FilterGraph::filterText(filter), utf8(row.text));
    }
}

void TestFilterGraph::valuesAndLabels()
{
    const QStringList two{"a"_s, "b"_s};
    QVariantMap filter{{"__inputs"_s, two}, {"__outputs"_s, two}, {"__note"_s, 1}, {"_k"_s, 2}};
    QCOMPARE(FilterGraph::filterText(named("f", filter)), "[a][b]f=_k=2[a][b]"_s);
    filter.insert("value"_s, 3);
    QCOMPARE(FilterGraph::filterText(named("f", filter)), "[a][b]f=3[a][b]"_s);
}

void TestFilterGraph::fontIsItsFile()
{
    const QString text =
        FilterGraph::filterText(named("drawtext", {{"fontfile"_s, QFont("DejaVu Sans"_s)}}));
    const QString path = text.section("drawtext=fontfile="_s, 1);
    QVERIFY2(path.endsWith("/DejaVuSans.ttf"_s), qPrintable(text));
    QVERIFY(QFileInfo(path).isFile());
}

void TestFilterGraph::throwsForOtherThanMaps()
{
    FilterGraph graph("vrt"_s);
    graph.addChain({named("hflip", {}), "vflip"_s}, {}, {});
    try {
        const QString text = graph.toString();
        QFAIL(qPrintable(text));
    } catch (const FFmpegFilterGraphException &exception) {
        QCOMPARE(exception.message(), "非map类型"_s);
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
        {escapeDrawtextText, "  a ", R"(\\\  a\\\ )"},
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
