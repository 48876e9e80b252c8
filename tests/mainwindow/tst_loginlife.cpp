// SPDX-License-Identifier: MIT
#include "browser/qminiblinkbrowser.h"
#include "browser/userinfomanager.h"
#include "browser/webviewloader.h"
#include "mainwindow/loginstage.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "support/desktop.h"
#include "support/guisupport.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QtTest>
#include <QWindow>

#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace {

constexpr unsigned mostSeconds = 100;
// Exit codes of the programs that this one is, too.
constexpr int failed = 70;
constexpr int cannotFence = 71;

// A computer that has much else to do takes its time.
template<class Condition>
bool waitFor(Condition isMet)
{
    return QTest::qWaitFor(isMet, 20000);
}

/// Something that a login dialog is in the middle of.
struct Moment
{
    const char *name;
    const char *page;
};

// Pages come to it by themselves, or after a click into their upper left corner.
constexpr Moment moments[] = {
    {"loading", nullptr},
    {"shown", "<script>document.title = 'now'</script>"},
    {"in a call", "<script>external.SetUserInfo('{\"id\":1}')</script>"},
    {"with a list",
     "<body style='background:#0f0'><select><option>1<option>2</select><script>document.title = "
     "'now'</script>"},
    {"hanging with a list",
     "<body style='background:#0f0'><select><option>1<option>2</select><script>document.title = "
     "'now'; onmousedown = () => "
     "setTimeout(() => { document.title = 'hangs'; for (;;); }, 500)</script>"},
    {"dying", "<script>document.title = 'now'</script>"},
};

/// The program that opens its login, ends it in such a moment, and ends.
class EndingProgram
{
public:
    /// @param isLeft whether the program is left then, with the dialog open; otherwise the dialog
    ///        is closed, and has to open again
    EndingProgram(const QByteArray &moment, bool isLeft) : m_moment(moment), m_isLeft(isLeft) {}

    int run()
    {
        // One that hangs ends by a signal.
        ::alarm(mostSeconds);
        QTimer::singleShot(0, qApp, [this] { useLogin(); });
        const int exitCode = QApplication::exec();
        m_stage.end();
        return m_failure.isEmpty() ? exitCode : failed;
    }

private:
    void useLogin();
    void reach(QWidget &dialog);
    void end(QWidget &dialog);
    void expect(bool isTrue, const char *what);

    LoginStage m_stage;
    const QByteArray m_moment;
    const bool m_isLeft;
    QByteArray m_failure;
    QStringList m_titles;
};

void EndingProgram::expect(bool isTrue, const char *what)
{
    if (isTrue)
        return;
    m_failure = what;
    std::fprintf(stderr, "failed: %s\n", what);
}

void EndingProgram::useLogin()
{
    for (const Moment &moment : moments) {
        if (m_moment == moment.name)
            m_stage.service().setPage("/login"_s,
                                      {moment.page, "text/html", {}, 200, moment.page == nullptr});
    }
    bool wasThere = false;
    whenModal("WebLoginDialog", [&](QWidget &dialog) {
        wasThere = true;
        reach(dialog);
    });
    press(m_stage.window(), "btnLogin");
    expect(wasThere, "dialog");
    if (m_isLeft)
        return;
    m_stage.service().setPage("/login"_s, {"<script>external.CloseWindow()</script>"});
    UserInfoManager::instance().logout();
    press(m_stage.window(), "btnLogin");
    m_stage.window().leaveProgram();
}

void EndingProgram::reach(QWidget &dialog)
{
    auto *browser = child<QMiniblinkBrowser>(dialog, "mb");
    QObject::connect(browser, &QMiniblinkBrowser::titleChanged, browser,
                     [this](const QString &title) { m_titles += title; });
    const auto has = [&](const char *title) {
        expect(waitFor([&] { return m_titles.contains(QLatin1String(title)); }), title);
    };
    const QPointer<QWidget> open = &dialog;
    if (m_moment == "in a call") {
        // Inside of the page's call.
        bool isEnded = false;
        QObject::connect(&UserInfoManager::instance(), &UserInfoManager::loginStateChanged, open,
                         [&] {
                             end(*open);
                             isEnded = true;
                         });
        const bool isCalled =
            UserInfoManager::instance().isLoggedIn() || waitFor([&] { return isEnded || !open; });
        expect(isCalled, "call");
        if (open && !isEnded)
            end(dialog);
        return;
    }
    if (m_moment != "loading")
        has("now");
    if (m_moment.endsWith("list")) {
        expect(waitFor([&] { return !child(dialog, "loginVeil")->isVisible(); }), "veil");
        const QPoint field = browser->mapToGlobal(QPoint(20, 16)) * browser->devicePixelRatioF();
        const auto isDown = [&] {
            const QWindowList windows = QGuiApplication::topLevelWindows();
            return std::any_of(windows.begin(), windows.end(), [](const QWindow *window) {
                return window->isExposed() && window->objectName().contains("RenderWidget"_s);
            });
        };
        // Before it is seen, a page gets no input.
        expect(
            waitFor([&] { return screenPart(*browser).pixelColor(300, 200) == QColor(Qt::green); }),
            "picture");
        Desktop::click(field);
        expect(waitFor(isDown), "list");
    }
    if (m_moment.startsWith("hanging"))
        has("hangs");
    if (m_moment == "dying") {
        for (const qint64 pid : renderProcesses())
            ::kill(pid_t(pid), SIGKILL);
    }
    end(dialog);
}

void EndingProgram::end(QWidget &dialog)
{
    for (const qint64 pid : engineProcesses())
        std::printf("engine %lld\n", pid);
    std::fflush(stdout);
    if (m_isLeft)
        m_stage.window().leaveProgram();
    else
        dialog.close();
}

// Shows a page, and tells how the processes that read it are fenced in.
int tellFence()
{
    WebViewLibrary *library = openWebViewLibrary();
    if (library == nullptr)
        return cannotFence;
    const PageServer server({{"/"_s, {"page"}}});
    QMiniblinkBrowser browser(*library);
    QSignalSpy loads(&browser, &QMiniblinkBrowser::loadingFinish);
    browser.loadUrl(server.address("/"_s));
    if (!loads.wait(20000) || loads[0][1].value<LoadingResult>() != LoadSucceeded)
        return failed;
    for (const qint64 pid : renderProcesses())
        std::printf("%s", contentOf("/proc/%1/status"_s.arg(pid)).constData());
    return 0;
}

bool areGone(const QList<qint64> &processes)
{
    return std::all_of(processes.begin(), processes.end(), [](qint64 pid) {
        const char state = processState(pid);
        return state == 0 || state == 'Z';
    });
}

} // namespace

/// What becomes of the login's window and of the engine's processes, however one of them ends.
class TestLoginLife : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fenced();
    void ends_data();
    void ends();
    void rests();
    void dies();
    void cleanupTestCase() { m_stage.reset(); }

private:
    // The programs that the tests above run have the screen to themselves.
    LoginStage &stage()
    {
        if (!m_stage)
            m_stage = std::make_unique<LoginStage>();
        return *m_stage;
    }

    std::unique_ptr<LoginStage> m_stage;
};

void TestLoginLife::initTestCase()
{
    QFile::remove(appDir() + "/module"_s);
    QVERIFY(QFile::link(builtProgram("module"_s), appDir() + "/module"_s));
}

// Root has no fence, so somebody else is asked there.
void TestLoginLife::fenced()
{
    const QTemporaryDir home;
    QStringList words{QCoreApplication::applicationFilePath(), "fence"_s, "-platform"_s,
                      "offscreen"_s};
    if (geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        QCOMPARE(::chown(QFile::encodeName(home.path()).constData(), nobody, nobody), 0);
        const QString id = QString::number(nobody);
        words =
            QStringList{"setpriv"_s, "--reuid"_s, id, "--regid"_s, id, "--clear-groups"_s} + words;
    }
    QStringList environment{"HOME="_s + home.path(), "TMPDIR="_s + home.path()};
    for (const char *name : {"RUNTIME_DIR", "DATA_HOME", "CACHE_HOME", "CONFIG_HOME"})
        environment += "XDG_"_s + QLatin1String(name) + u'=' + home.path();
    const ToolRun run = runTool(words.takeFirst(), words, environment);
    if (run.exitCode == cannotFence)
        QSKIP("this system fences nobody in");
    if (run.exitCode != 0 && run.exitCode != failed)
        QSKIP("nobody can't run this program here");
    QVERIFY2(run.exitCode == 0, run.err.constData());
    // The filter of system calls, and a second number in a space of processes of its own.
    const QStringList fences = run.outLines().filter(QRegularExpression("^(Seccomp|NSpid):"_s));
    QVERIFY(!fences.isEmpty());
    for (const QString &fence : fences)
        QVERIFY2(fence == "Seccomp:\t2"_s || fence.split(u'\t').size() >= 3, qPrintable(fence));
}

void TestLoginLife::ends_data()
{
    QTest::addColumn<QString>("moment");
    QTest::addColumn<QString>("how");
    for (const Moment &moment : moments) {
        for (const char *how : {"leave", "close"})
            QTest::addRow("%s, %s", moment.name, how)
                << QString::fromLatin1(moment.name) << QString::fromLatin1(how);
    }
}

void TestLoginLife::ends()
{
    QFETCH(const QString, moment);
    QFETCH(const QString, how);
    const ToolRun run = runTool(QCoreApplication::applicationFilePath(), {how, moment});
    QVERIFY2(!run.crashed && run.exitCode == 0, run.err.constData());
    QVERIFY2(!run.err.contains("Expect troubles"), run.err.constData());
    QList<qint64> processes;
    for (const QString &line : run.outLines())
        processes += line.section(u' ', 1).toLongLong();
    QVERIFY(processes.size() >= 2);
    QTRY_VERIFY(areGone(processes));
}

// A page that changes nothing is painted no more.
void TestLoginLife::rests()
{
    stage().service().setPage("/login"_s, {"page"});
    struct Watch : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                m_sincePaint.start();
            return false;
        }
        QElapsedTimer m_sincePaint;
    } watch;
    bool hasRested = false;
    whenModal("WebLoginDialog", [&](QWidget &dialog) {
        QPointer<QWidget> open = &dialog;
        child(dialog, "mb")->installEventFilter(&watch);
        hasRested = waitFor([&] {
            return open && !child(dialog, "loginVeil")->isVisible() &&
                   watch.m_sincePaint.isValid() && watch.m_sincePaint.elapsed() > 300;
        });
        dialog.close();
    });
    press(stage().window(), "btnLogin");
    QVERIFY(hasRested);
}

// The user is told, and can try again. Last, since an engine without all its processes stays so.
void TestLoginLife::dies()
{
    stage().service().setPage("/login"_s, {"<script>document.title = 'there'</script>"});
    QStringList told;
    const auto answer = [&told](QWidget &notice, const char *button) {
        told += child<QLabel>(notice, "lblHint")->text();
        shoot(notice, "login-died");
        press(notice, button);
    };
    for (const bool isWhole : {false, true}) {
        QList<qint64> processes;
        int pages = 0;
        whenModal("WebLoginDialog", [&](QWidget &dialog) {
            const bool isShown = waitFor([&] { return !child(dialog, "loginVeil")->isVisible(); });
            if (!isShown)
                dialog.close();
            processes = isWhole ? engineProcesses() : renderProcesses();
            whenModal("LoginNotice", [&](QWidget &notice) {
                // What comes of it is another page, or another word.
                whenModal(isWhole ? "LoginNotice" : "WebLoginDialog", [&](QWidget &next) {
                    if (isWhole) {
                        answer(next, "btnOk");
                        return;
                    }
                    const auto *page = child<QMiniblinkBrowser>(next, "mb");
                    QSignalSpy titles(page, &QMiniblinkBrowser::titleChanged);
                    pages += int(waitFor([&] { return titles.contains({"there"_s}); }));
                    processes += renderProcesses();
                    next.close();
                });
                answer(notice, "btnRetry");
            });
            for (const qint64 pid : qAsConst(processes))
                ::kill(pid_t(pid), SIGKILL);
        });
        press(stage().window(), "btnLogin");
        QVERIFY(processes.size() >= 2);
        QCOMPARE(pages, isWhole ? 0 : 1);
        QTRY_VERIFY(areGone(processes));
    }
    QCOMPARE(told.size(), 3);
    QVERIFY(told[0].startsWith("网页意外中止"_s) && told[1] == told[0]);
    QVERIFY(told[2].contains("请重新启动程序"_s));
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.value(1) == "fence"_s)
        return tellFence();
    if (words.value(1) == "leave"_s || words.value(1) == "close"_s)
        return EndingProgram(words.value(2).toLatin1(), words[1] == "leave"_s).run();
    TestLoginLife test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_loginlife.moc"
