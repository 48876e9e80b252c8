// SPDX-License-Identifier: MIT
#include "browser/fakewebview.h"
#include "browser/qmbbrower.h"
#include "browser/scriptconversion.h"
#include "support/casename.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QtTest>

namespace {

ScriptValue number(const char *text)
{
    ScriptValue value;
    value.kind = ScriptValue::Number;
    value.text = QLatin1String(text);
    return value;
}

ScriptValue array(const QVector<ScriptValue> &elements)
{
    ScriptValue value;
    value.kind = ScriptValue::Array;
    value.elements = elements;
    return value;
}

const QStringList bindings = {"bind _JsSetWindowSize/2"_s, "bind _JsSetWindowCaption/4"_s,
                              "bind _JsShowWindow/1"_s,    "bind _JsHideWindow/0"_s,
                              "bind _JsMinWindow/0"_s,     "bind _JsMaxWindow/0"_s,
                              "bind _JsRestoreWindow/0"_s, "bind _JsCloseWindow/0"_s,
                              "bind _JsCenterWindow/0"_s,  "bind _JsDoEvent/2"_s};

const QString assignments = "window.external={}"
                            "\nwindow.external.SetWindowSize=_JsSetWindowSize"
                            "\nwindow.external.SetWindowCaption=_JsSetWindowCaption"
                            "\nwindow.external.ShowWindow=_JsShowWindow"
                            "\nwindow.external.HideWindow=_JsHideWindow"
                            "\nwindow.external.MinWindow=_JsMinWindow"
                            "\nwindow.external.MaxWindow=_JsMaxWindow"
                            "\nwindow.external.RestoreWindow=_JsRestoreWindow"
                            "\nwindow.external.CloseWindow=_JsCloseWindow"
                            "\nwindow.external.CenterWindow=_JsCenterWindow"
                            "\nwindow.external.JsDoEvent=_JsDoEvent"_s;

QString published(const QString &name)
{
    return "\n         if(_JsDoEvent){\n            window.external.%1=function(){return "
           "_JsDoEvent('%1',arguments)}\n         }\n         "_s.arg(name);
}

} // namespace

/// The widget over a view that only notes.
class TestBrowserWidget : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_browser = std::make_unique<QMBBrower>(m_library);
        m_view = m_library.view;
    }
    void loading();
    void bridgeOrder();
    void conversions();
    void calls();
    void mouse();
    void keys();
    void picture();

private:
    FakeLibrary m_library;
    std::unique_ptr<QMBBrower> m_browser;
    FakeWebView *m_view = nullptr;
};

void TestBrowserWidget::loading()
{
    QVERIFY(m_view->taken().first().startsWith("agent Mozilla/5.0 (Macintosh;"_s));
    QSignalSpy begun(m_browser.get(), &QMiniblinkBrowser::loadingBegin);
    QSignalSpy finished(m_browser.get(), &QMiniblinkBrowser::loadingFinish);
    QSignalSpy urls(m_browser.get(), &QMiniblinkBrowser::urlChanged);
    QSignalSpy titles(m_browser.get(), &QMiniblinkBrowser::titleChanged);
    m_browser->loadUrl("http://墨.example/"_s);
    QCOMPARE(m_view->taken().first(), "loadUrl http://墨.example/"_s);
    QCOMPARE(begun.value(0).value(0).toString(), "http://墨.example/"_s);

    // Nothing is signalled from inside the library.
    m_view->tells.onUrlChanged("u"_s);
    m_view->tells.onTitleChanged("t"_s);
    m_view->tells.onLoadingFinished("u"_s, LoadFailed, "why"_s);
    QCOMPARE(urls.size() + titles.size() + finished.size(), 0);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(urls.value(0).value(0).toString() + titles.value(0).value(0).toString(), "ut"_s);
    QCOMPARE(finished.value(0).value(1).value<LoadingResult>(), LoadFailed);
    QCOMPARE(finished.value(0).value(2).toString(), "why"_s);

    m_view->taken();
    m_browser->goForward();
    m_view->hasForward = true;
    m_browser->goForward();
    m_browser->setLocalStorageFullPath("/tmp/墨"_s);
    QCOMPARE(m_view->taken(), QStringList({"forward"_s, "storage /tmp/墨"_s}));
}

void TestBrowserWidget::bridgeOrder()
{
    const auto handler = [](const QVariantList &) { return QVariant(); };
    m_view->taken();
    m_browser->registerEvents({"B"_s, "A"_s}, handler);
    QCOMPARE(m_view->taken(), QStringList("run "_s + published("B"_s) + published("A"_s)));

    // A load is under way: a name waits for the document, the functions don't.
    m_view->loading = true;
    m_view->ready = false;
    m_browser->loadUrl("x"_s);
    QCOMPARE(m_view->taken(),
             QStringList("loadUrl x"_s) + bindings + QStringList("run "_s + assignments));
    m_browser->registerEvent("C"_s, handler);
    QCOMPARE(m_view->taken(), QStringList());
    const QString whole =
        assignments + u'\n' + published("A"_s) + published("B"_s) + published("C"_s);
    QCOMPARE(m_view->startScript, whole);

    m_view->ready = true;
    bool wasBound = false;
    connect(m_browser.get(), &QMiniblinkBrowser::urlChanged, this,
            [&] { wasBound = m_view->taken() == bindings + QStringList("run "_s + whole); });
    m_view->tells.onUrlChanged("x"_s);
    QCoreApplication::sendPostedEvents();
    QVERIFY(wasBound);
    m_browser->removeEvent("B"_s);
    QVERIFY(!m_view->startScript.contains("'B'"_s));
}

void TestBrowserWidget::conversions()
{
    const auto check = [](const char *text, const QVariant &wanted) {
        const CaseName inCase(text);
        const QVariant value = fromScript(number(text));
        QCOMPARE(value.type(), wanted.type());
        QCOMPARE(value, wanted);
    };
    check("100", 100);
    check("100.5", 100.5);
    check("-5", -5.0);
    check("1e+21", 1e21);
    check("3000000000", 3e9);
    check("-Infinity", -qInf());
    QVERIFY(qIsNaN(fromScript(number("NaN")).toDouble()));
    QVERIFY(!fromScript(ScriptValue()).isValid());

    const QVariantList list{
        true,       1,          qint64(9007199254740991),        0.1,
        "墨\"\n"_s, QVariant(), QVariantList{2, QVariantList()}, QVariantMap{{"a"_s, 1}}};
    const ScriptValue value = toScript(list);
    QStringList texts;
    for (const ScriptValue &element : value.elements)
        texts += QString::number(element.kind) + element.text;
    QCOMPARE(texts, QStringList({"2"_s, "31"_s, "39007199254740991"_s, "30.1"_s, "4墨\"\n"_s, "1"_s,
                                 "5"_s, "1"_s}));
    QVERIFY(value.elements[0].isTrue);
    QCOMPARE(fromScript(value.elements[6]), QVariant(list[6]));
}

void TestBrowserWidget::calls()
{
    QSignalSpy controls(m_browser.get(), &QMBBrower::windowControlActivated);
    QVariantList got;
    m_browser->registerEvent("E"_s, [&got](const QVariantList &arguments) {
        got = arguments;
        return "done"_s;
    });
    m_browser->loadUrl("x"_s);
    for (int i = 0; i < 9; ++i) {
        const QString name = bindings[i].mid(5).section(u'/', 0, 0);
        QCOMPARE(m_view->functions[name]({number("3")}).kind, ScriptValue::Null);
        QCOMPARE(controls[i], QVariantList({i + 1, QVariantList{3}}));
    }

    const ScriptFunction doEvent = m_view->functions["_JsDoEvent"_s];
    const ScriptValue name = toScript("E"_s);
    QCOMPARE(doEvent({name, array({number("1"), number("2")})}).text, "done"_s);
    QCOMPARE(got, QVariantList({1, 2}));
    doEvent({name, array({array({number("1")})})});
    QCOMPARE(got, QVariantList({1}));
    doEvent({name, array({array({}), number("2")})});
    QCOMPARE(got, QVariantList({QVariantList(), 2}));
    got = {"untouched"_s};
    for (const QVector<ScriptValue> &wrong : {QVector<ScriptValue>{name},
                                              {name, number("1")},
                                              {toScript("F"_s), array({})},
                                              {name, array({}), array({})}})
        QCOMPARE(doEvent(wrong).kind, ScriptValue::Null);
    QCOMPARE(got, QVariantList({"untouched"_s}));
}

void TestBrowserWidget::mouse()
{
    m_view->taken();
    m_view->cursor = 2;
    const auto send = [this](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
                             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent event(type, QPointF(10.6, 20.4), button, held, modifiers);
        QCoreApplication::sendEvent(m_browser.get(), &event);
        return m_view->taken();
    };
    QCOMPARE(send(QEvent::MouseMove, Qt::NoButton, Qt::RightButton | Qt::MiddleButton),
             QStringList("mouse 512 11,20 12"_s));
    QCOMPARE(m_browser->cursor().shape(), Qt::PointingHandCursor);
    m_view->cursor = 99;
    QCOMPARE(send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, Qt::ShiftModifier),
             QStringList("mouse 513 11,20 5"_s));
    QCOMPARE(m_browser->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(send(QEvent::MouseButtonRelease, Qt::RightButton, {}),
             QStringList("mouse 517 11,20 0"_s));
    QCOMPARE(send(QEvent::MouseButtonDblClick, Qt::MiddleButton, {}, Qt::ControlModifier),
             QStringList("mouse 521 11,20 8"_s));
    QCOMPARE(send(QEvent::MouseButtonPress, Qt::BackButton, {}),
             QStringList("mouse 523 11,20 0"_s));

    QWheelEvent wheel(QPointF(1, 2), QPointF(1, 2), {}, QPoint(0, 120), {}, Qt::ControlModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_browser.get(), &wheel);
    QCOMPARE(m_view->taken(), QStringList("wheel 120 1,2 8"_s));
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(3, 4), {}, Qt::ShiftModifier);
    QCoreApplication::sendEvent(m_browser.get(), &menu);
    QCOMPARE(m_view->taken(), QStringList("menu 0 3,4 4"_s));
}

void TestBrowserWidget::keys()
{
    m_view->taken();
    const auto press = [this](int key, Qt::KeyboardModifiers modifiers, const QString &text,
                              ushort count) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, 38, 97, 0, text, count > 1, count);
        QCoreApplication::sendEvent(m_browser.get(), &event);
        return m_view->taken();
    };
    const QString face = QString::fromUtf8("\xf0\x9f\x98\x80");
    QCOMPARE(press(Qt::Key_A, Qt::NoModifier, "a"_s, 1),
             QStringList({"down 97 38 65 0"_s, "char 97 0 0 0"_s}));
    QCOMPARE(press(Qt::Key_A, Qt::NoModifier, face, 2),
             QStringList({"down 97 38 65 4000"_s, "char 128512 0 0 4000"_s}));
    QCOMPARE(press(Qt::Key_Left, Qt::NoModifier, {}, 1), QStringList("down 97 38 16777234 100"_s));
    QCOMPARE(press(Qt::Key_A, Qt::ShiftModifier, {}, 1), QStringList("down 97 38 65 100"_s));
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, 38, 97, 0);
    QCoreApplication::sendEvent(m_browser.get(), &release);
    QCOMPARE(m_view->taken(), QStringList("up 97 38 65 0"_s));

    QInputMethodEvent typed("未"_s, {});
    typed.setCommitString("墨"_s + face);
    QCoreApplication::sendEvent(m_browser.get(), &typed);
    QCOMPARE(m_view->taken(), QStringList({"char 22696 0 0 0"_s, "char 128512 0 0 0"_s}));
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImCursorRectangle);
    QCoreApplication::sendEvent(m_browser.get(), &query);
    QVERIFY(query.value(Qt::ImEnabled).toBool());
    QCOMPARE(query.value(Qt::ImCursorRectangle).toRect(), QRect(7, 8, 2, 16));
}

void TestBrowserWidget::picture()
{
    m_browser->resize(101, 51);
    m_browser->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_browser.get()));
    const double scale = m_browser->devicePixelRatioF();
    QCOMPARE(m_view->size, QSize(qRound(101 * scale), qRound(51 * scale)));
    QVERIFY(m_view->taken().join(u' ').contains("resize dirty"_s));
    const QImage seen = m_browser->grab().toImage();
    for (const QPoint &corner : {seen.rect().topLeft(), seen.rect().bottomRight()})
        QCOMPARE(seen.pixelColor(corner), QColor(Qt::white));
}

int main(int argc, char **argv)
{
    // As on a dense screen whose scale is no whole number.
    qputenv("QT_SCALE_FACTOR", "1.5");
    QApplication application(argc, argv);
    TestBrowserWidget test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_browserwidget.moc"
