// SPDX-License-Identifier: MIT
#include "browser/webviewtest.h"
#include "support/desktop.h"
#include "support/guisupport.h"

#include <QWindow>

/// Mouse and keyboard reach the page in the real view.
class TestWebInput : public WebViewTest
{
    Q_OBJECT

private slots:
    void typing();
    void listsAndDrags();

private:
    void show();
};

void TestWebInput::show()
{
    m_browser->show();
    QVERIFY(QTest::qWaitForWindowActive(m_browser.get()));
    m_browser->setFocus();
}

// By mouse and keyboard, as a user would.
void TestWebInput::typing()
{
    const PageServer server(
        {{"/"_s,
          {"<body style='margin:0;background:#0000ff'><form onsubmit='external.Report(u.value); "
           "return false'>"
           "<input id=u style='position:absolute;left:20px;top:20px;width:200px;height:30px'"
           " onselect='external.Report(\"selected\")'>"
           "<a href='#' style='position:absolute;left:20px;top:100px;font-size:40px'>link</a>"
           "<div style='height:2000px'></div></form>"
           "<script>onkeydown = e => external.Report('down ' + e.key);"
           "onscroll = () => external.Report('scrolled')</script>"}}});
    make(QUrl(server.address()));
    show();
    // The engine has another process and another surface for each site.
    m_browser->loadUrl(server.address("/"_s).replace("127.0.0.1"_s, "localhost"_s));
    QTRY_COMPARE(m_results.size(), 1);
    m_browser->loadUrl(server.address("/"_s));
    QTRY_COMPARE(m_results.size(), 2);
    QTRY_COMPARE(m_browser->grab().toImage().pixelColor(300, 250), QColor(Qt::blue));

    QTest::mouseMove(m_browser.get(), QPoint(60, 120));
    QTRY_COMPARE(m_browser->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseMove(m_browser.get(), QPoint(60, 35));
    QTest::mouseClick(m_browser.get(), Qt::LeftButton, {}, QPoint(60, 35));
    QTRY_COMPARE(m_browser->cursor().shape(), Qt::IBeamCursor);
    QTRY_VERIFY(m_browser->inputMethodQuery(Qt::ImCursorRectangle)
                    .toRect()
                    .intersects(QRect(20, 20, 200, 30)));
    QTest::keyClicks(m_browser.get(), "ab"_s);
    QInputMethodEvent committed;
    committed.setCommitString("墨"_s);
    QCoreApplication::sendEvent(m_browser.get(), &committed);
    QTest::keyClick(m_browser.get(), Qt::Key_Left);
    QTest::keyClick(m_browser.get(), Qt::Key_Backspace);
    QTest::keyClick(m_browser.get(), Qt::Key_A, Qt::ControlModifier);
    QTRY_VERIFY(m_reports.contains("selected"_s));
    QTest::keyClick(m_browser.get(), Qt::Key_Home);
    QTest::keyClick(m_browser.get(), Qt::Key_Enter);
    QTRY_VERIFY2(m_reports.contains("a墨"_s), qPrintable(m_reports.join(u' ')));
    QVERIFY(m_reports.contains("down Backspace"_s));
    QWheelEvent wheel(QPointF(200, 200), QPointF(200, 200), {}, QPoint(0, -120), {}, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_browser.get(), &wheel);
    QTRY_VERIFY(m_reports.contains("scrolled"_s));
    shoot(*m_browser, "webview");
}

// A list drops down where its field is seen, also in a modal window; and who drags a text has let
// go of it afterwards.
void TestWebInput::listsAndDrags()
{
    const PageServer server(
        {{"/"_s,
          {"<body style='margin:0;background:#0000ff'><select id=list "
           "style='position:absolute;left:20px;"
           "top:20px;height:20px'><option>one<option>two</select><p style='position:absolute;"
           "left:20px;top:150px' draggable=true>text</p><script>"
           "list.onchange = () => external.Report(list.value);"
           "let isLate = false;"
           "onmouseup = () => { const end = Date.now() + 500; while (isLate && Date.now() < end);"
           "external.Report('up'); if (isLate) alert('late'); isLate = list.value === 'two' }"
           "</script>"}}});
    make(QUrl(server.address()));
    m_browser->setWindowModality(Qt::ApplicationModal);
    m_browser->move(300, 200);
    show();
    m_browser->loadUrl(server.address("/"_s));
    QTRY_COMPARE(m_results.size(), 1);
    // Before it is seen, a page gets no input.
    QTRY_COMPARE(screenPart(*m_browser).pixelColor(350, 250), QColor(Qt::blue));
    const auto onScreen = [this](int x, int y) {
        return m_browser->mapToGlobal(QPoint(x, y)) * m_browser->devicePixelRatioF();
    };
    Desktop::click(onScreen(40, 30));
    // The second of its rows, each about as high as the field.
    const QPoint second = m_browser->mapToGlobal(QPoint(40, 64));
    const auto isDown = [this, second] {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        return std::any_of(windows.begin(), windows.end(), [&](const QWindow *window) {
            return window != m_browser->windowHandle() && window->isExposed() &&
                   window->geometry().contains(second);
        });
    };
    QTRY_VERIFY(isDown());
    Desktop::click(onScreen(40, 64));
    QTRY_VERIFY2(m_reports.contains("two"_s), qPrintable(m_reports.join(u' ')));
    QTRY_VERIFY(!isDown());
    m_reports.clear();
    Desktop::drag(onScreen(30, 175), onScreen(120, 220));
    QTRY_COMPARE(m_reports, QStringList("up"_s));
    // A view may go while its list is down, and its page still calls then.
    Desktop::click(onScreen(40, 30));
    QTRY_VERIFY(isDown());
    m_browser.reset();
    QTRY_VERIFY(QGuiApplication::topLevelWindows().isEmpty());
}

QTEST_MAIN(TestWebInput)
#include "tst_webinput.moc"
