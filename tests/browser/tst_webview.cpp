// SPDX-License-Identifier: MIT
#include "browser/webviewtest.h"
#include "support/casename.h"
#include "support/guisupport.h"
#include "support/testfile.h"

#include <QSignalSpy>

namespace {

QByteArray page(const char *script)
{
    return QByteArray("<!doctype html><title>login</title><script>") + script + "</script>";
}

// Each expression's text, or the error of the one that has none.
const QByteArray told =
    "const told = f => { try { return String(f()) } catch (e) { return e.name } };"
    "const external = window.external;";

} // namespace

/// What a page can do in the real view, and what it can't.
class TestWebView : public WebViewTest
{
    Q_OBJECT

private slots:
    void everyValue();
    void early();
    void otherOrigin();
    void hostile();
    void loads();
    void certificates();
    void storage();
    void trialPage();
};

void TestWebView::everyValue()
{
    const PageServer server(
        {{"/"_s,
          {page(
              "const cycle = []; cycle[0] = cycle;"
              "const back = external.Echo(100.0, 100.5, -5, 3e9, '墨\\'\"\\n\\u2028', true, null, "
              "undefined,"
              "    [1, [2, 'x']], {length: 2, 0: 'a', 1: 'b'}, {a: 1}, () => 1, '😀'.repeat(60000));"
              "const long = back.pop();"
              "external.Report(JSON.stringify(back) + (long === '😀'.repeat(60000)));"
              "external.Echo(['one', 'array']);"
              "external.Report(String(external.JsDoEvent('Echo')) + external.SetWindowSize(1, 2));"
              "external.Echo(cycle, Array(9).fill(Array(9).fill(Array(9).fill(Array(9).fill(1)))))"
              ";external.Report('end')")}}});
    make(QUrl(server.address()));
    QSignalSpy controls(m_browser.get(), &QMBBrower::windowControlActivated);
    QVector<QVariantList> got;
    m_browser->registerEvent("Echo"_s, [&got](const QVariantList &arguments) {
        got += arguments;
        return QVariant(arguments);
    });
    m_browser->loadUrl(server.address("/"_s));
    QTRY_COMPARE(m_reports.size(), 3);
    QCOMPARE(m_reports[0],
             QString::fromUtf8("[100,100.5,-5,3000000000,\"墨'\\\"\\n\u2028\",true,null,null,"
                               "[1,[2,\"x\"]],[\"a\",\"b\"],null,null]true"));
    QCOMPARE(m_reports[1], "nullnull"_s);
    QCOMPARE(controls.value(0), QVariantList({1, QVariantList{1, 2}}));
    const QVariantList wanted{100,
                              100.5,
                              -5.0,
                              3e9,
                              QString::fromUtf8("墨'\"\n\u2028"),
                              true,
                              QVariant(),
                              QVariant(),
                              QVariantList{1, QVariantList{2, "x"_s}},
                              QVariantList{"a"_s, "b"_s},
                              QVariant(),
                              QVariant()};
    QCOMPARE(got.value(0).mid(0, 12), wanted);
    QCOMPARE(got[0][0].type(), QVariant::Int);
    QCOMPARE(got[0][2].type(), QVariant::Double);
    QCOMPARE(got.value(1), QVariantList({"one"_s, "array"_s}));
    QCOMPARE(got.size(), 3);
}

// A page may call while it is read; a name that is registered later reaches one that is shown, and
// one that is not there is an error.
void TestWebView::early()
{
    const PageServer server(
        {{"/"_s,
          {page((told + "external.Report(told(() => external.Nothing()));"
                        "const wait = () => external.Late ? external.Report(external.Late()) :"
                        "    setTimeout(wait, 5);"
                        "wait();")
                    .constData()),
           "text/html", "Content-Security-Policy: script-src 'unsafe-inline'"}}});
    make(QUrl(server.address()));
    m_browser->loadUrl(server.address("/"_s));
    QTRY_COMPARE(m_results.size(), 1);
    QCOMPARE(m_reports, QStringList("TypeError"_s));
    m_browser->registerEvent("Late"_s, [](const QVariantList &) { return "late"_s; });
    QTRY_COMPARE(m_reports.value(1), "late"_s);
    QSignalSpy titles(m_browser.get(), &QMiniblinkBrowser::titleChanged);
    m_browser->reload();
    QTRY_COMPARE(m_reports.mid(2), QStringList({"TypeError"_s, "late"_s}));
}

// A page that leaves the origin loses the bridge, and who comes back has it again.
void TestWebView::otherOrigin()
{
    const QByteArray tries =
        told + "const seen = [told(() => external.Report('stolen')), told(() => "
               "_JsDoEvent('Report', ['stolen'])),"
               "    prompt('key', '[\"_JsDoEvent\",[\"a\",[[\"s\",\"Report\"]]]]')].join();"
               "document.cookie = 'seen=' + seen;";
    PageServer other(
        {{"/"_s,
          {"<script>" + tries +
           "</script>"
           "<script>setTimeout(() => location = location.hash.slice(1) + '?' + seen, "
           "50)</script>"}},
         {"/frame"_s, {"<script>" + tries + "parent.postMessage(seen, '*')</script>"}}});
    const QByteArray otherFrame = other.address("/frame"_s).toUtf8();
    const PageServer own(
        {{"/"_s,
          {"<script>onmessage = e => { external.Report(e.data);"
           "location = '" +
           other.address("/"_s).toUtf8() +
           "#' + location.origin + '/back' }"
           "</script><iframe src='" +
           otherFrame + "'></iframe>"}},
         {"/back"_s, {page("external.Report(decodeURIComponent(location.search))")}}});
    make(QUrl(own.address()));
    m_browser->loadUrl(own.address("/"_s));
    QTRY_COMPARE(m_reports.size(), 2);
    QCOMPARE(m_reports[0], "TypeError,ReferenceError,"_s);
    QCOMPARE(m_reports[1], "?TypeError,ReferenceError,"_s);
}

void TestWebView::hostile()
{
    writeTestFile(m_storage.filePath("secret.html"_s), "<title>secret</title>");
    const QByteArray file = QUrl::fromLocalFile(m_storage.filePath("secret.html"_s)).toEncoded();
    const PageServer server({
        {"/"_s,
         {"<title>own</title><a id=d href='/download' download>d</a><a id=f href='" + file +
          "'>f</a><a id=m href='mailto:a@b.c'>m</a><a id=w target=_blank "
          "href='/new'>w</a><script>" +
          told + R"(
            external.Report(told(() => window.open('/new')));
            external.Report(told(() => confirm('sure?')));
            external.Report(told(() => prompt('name?', 'x')));
            alert('注意');
            (async () => {
                external.Report(await new Promise(done => navigator.geolocation.getCurrentPosition(
                    () => done('place'), error => done('code ' + error.code))));
                external.Report(await Notification.requestPermission());
                external.Report(await navigator.mediaDevices.getUserMedia({audio: true})
                    .then(() => 'sound', error => 'refused'));
                external.Report(await fetch(')" +
          file + R"(').then(() => 'read', e => e.name));
                for (const id of 'dfmw')
                    document.getElementById(id).click();
                location = ')" +
          file + R"(';
                location = 'data:text/html,<title>data</title>';
                setTimeout(() => { location = '/attached' }, 100);
                setTimeout(() => external.Report('still ' + document.title), 500);
            })();
            </script>)"}},
        {"/download"_s, {"x", "application/octet-stream"}},
        {"/attached"_s, {"x", "application/octet-stream", "Content-Disposition: attachment"}},
        {"/new"_s, {"<title>new</title>"}},
    });
    make(QUrl(server.address()));
    QSignalSpy alerts(m_browser.get(), &QMiniblinkBrowser::alertBox);
    m_browser->loadUrl(server.address("/"_s));
    QTRY_COMPARE_WITH_TIMEOUT(m_reports.size(), 8, 15000);
    QCOMPARE(m_reports, QStringList({"null"_s, "false"_s, "null"_s, "code 1"_s, "denied"_s,
                                     "refused"_s, "TypeError"_s, "still own"_s}));
    QCOMPARE(alerts.value(0).value(0).toString(), "注意"_s);
    QVERIFY(server.asked().contains("/attached"_s));
    QVERIFY(!server.asked().contains("/new"_s));
    QVERIFY(!m_results.contains(LoadFailed));
    QCOMPARE(QDir(QDir::homePath()).entryList({"*download*"_s, "attached*"_s}), QStringList());
    QCOMPARE(QApplication::topLevelWidgets().size(), 2); // the widget's and the view's
}

void TestWebView::loads()
{
    const PageServer server({{"/"_s, {page("")}},
                             {"/moves"_s, {"", "text/html", "Location: /", 302}},
                             {"/again"_s, {page("location = '/'")}},
                             {"/broken"_s, {"no", "text/html", {}, 500}}});
    const auto resultOf = [&](const QString &address) {
        make(QUrl(server.address()));
        m_results.clear();
        m_browser->loadUrl(address);
        return QTest::qWaitFor(
                   [&] { return !m_results.isEmpty() && m_results.last() != LoadCancelled; }, 10000)
                   ? int(m_results.last())
                   : -1;
    };
    QCOMPARE(resultOf(server.address("/"_s)), int(LoadSucceeded));
    QCOMPARE(resultOf(server.address("/moves"_s)), int(LoadSucceeded));
    QCOMPARE(resultOf(server.address("/again"_s)), int(LoadSucceeded));
    QVERIFY(!m_results.contains(LoadFailed));
    QCOMPARE(resultOf(server.address("/broken"_s)), int(LoadFailed));
    QCOMPARE(resultOf(server.address("/none"_s)), int(LoadFailed));
    for (const char *address : {"http://127.0.0.1:1/", "file:///etc/passwd", "javascript:1",
                                "data:text/html,x", "login.html", "chrome://version"}) {
        const CaseName inCase(address);
        QCOMPARE(resultOf(QLatin1String(address)), int(LoadFailed));
    }
}

void TestWebView::certificates()
{
    const PageServer server({{"/"_s, {page("external.Report('in')")}}}, true);
    const auto open = [&](const QStringList &unchecked) {
        make(QUrl(server.address()));
        m_browser->setUncheckedHosts(unchecked);
        m_results.clear();
        m_browser->loadUrl(server.address("/"_s));
    };
    for (const char *host : {"", "localhost", "0.0.1"}) {
        open({QLatin1String(host)});
        QTRY_COMPARE(m_results, QVector<LoadingResult>{LoadFailed});
        QVERIFY2(m_reason.contains("127.0.0.1"_s), qPrintable(m_reason));
    }
    QCOMPARE(m_reports, QStringList());
    open({"example.org"_s, "127.0.0.1"_s});
    QTRY_COMPARE(m_reports, QStringList("in"_s));
    QTRY_COMPARE(m_results, QVector<LoadingResult>{LoadSucceeded});
}

// What a page stores is there for the next view, in the folder that was named.
void TestWebView::storage()
{
    const PageServer server({{"/"_s,
                              {page("external.Report(localStorage.seen + document.cookie);"
                                    "localStorage.seen = 'yes';"
                                    "document.cookie = 'kept=1; max-age=9999'")}}});
    for (const char *seen : {"undefined", "yes"}) {
        make(QUrl(server.address()));
        m_browser->loadUrl(server.address("/"_s));
        QTRY_COMPARE(m_reports, QStringList(QLatin1String(seen)));
        m_reports.clear();
        // The engine writes some time later, or when the view goes.
        QTest::qWait(500);
        m_browser.reset();
    }
    QVERIFY(QFileInfo::exists(m_storage.filePath("Local Storage"_s)));
    QStringList inHome;
    QDirIterator walk(QDir::homePath(), {"login"_s, "*WebEngine*"_s}, QDir::AllEntries,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        inHome += walk.next();
    QCOMPARE(inHome, QStringList());
}

// The page by which the bridge is tried by hand: a button for each call.
void TestWebView::trialPage()
{
    const PageServer server({{"/"_s,
                              {contentOf(":/web/loading.html"_s) +
                               "<script>"
                               "for (const button of document.querySelectorAll('button'))"
                               "    button.click();"
                               "external.Report(result.textContent)</script>"}}});
    make(QUrl(server.address()));
    QSignalSpy controls(m_browser.get(), &QMBBrower::windowControlActivated);
    int events = 0;
    m_browser->registerEvents({"GetDeviceInfo"_s, "GetTrackHeader"_s},
                              [&events](const QVariantList &) { return ++events; });
    m_browser->loadUrl(server.address("/"_s));
    QTRY_COMPARE(m_reports, QStringList("GetTrackHeader：2"_s));
    QSet<int> numbers;
    for (const QVariantList &control : qAsConst(controls))
        numbers += control[0].toInt();
    QCOMPARE(numbers, QSet<int>({1, 2, 3, 4, 5, 6, 7, 8, 9}));
    QCOMPARE(controls.size(), 9);
}

QTEST_MAIN(TestWebView)
#include "tst_webview.moc"
