// SPDX-License-Identifier: MIT
#include "platform/inputshape.h"
#include "platform/windowmanager.h"
#include "platform/windowtree.h"
#include "support/desktop.h"
#include "support/guisupport.h"

#include <QtTest>
#include <QWidget>
#include <QWindow>

// Other programs' windows, for which windows of the test stand in, under a real window manager.
class TestWindowTree : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void topmostWins();
    void hiddenOnesDontCount();
    void deepestWins();
    void framesBelongToTheirWindow();
    void menusCount();
    void spansTheDesktop();

private:
    static WId id(const QWidget &window) { return window.windowHandle()->winId(); }
    static QPoint middle(const QWidget &window)
    {
        return window.mapToGlobal(window.rect().center());
    }
    static std::unique_ptr<QWidget> open(const QRect &area, Qt::WindowFlags flags = {})
    {
        auto window = std::make_unique<QWidget>(nullptr, flags);
        window->setGeometry(area);
        window->show();
        return QTest::qWaitForWindowExposed(window.get()) ? std::move(window) : nullptr;
    }
    WId seenAt(const QPoint &point, const QVector<WId> &ignored = {}) const
    {
        const auto found = windowAt(point, ignored);
        return found ? found->id : 0;
    }

    std::unique_ptr<QWidget> m_below;
    std::unique_ptr<QWidget> m_above;
};

void TestWindowTree::init()
{
    m_below = open({200, 200, 400, 300});
    QVERIFY(m_below);
    m_above = open({300, 250, 400, 300});
    QVERIFY(m_above);
    QTRY_COMPARE(seenAt(middle(*m_above)), id(*m_above));
}

void TestWindowTree::cleanup()
{
    m_above.reset();
    m_below.reset();
}

void TestWindowTree::topmostWins()
{
    const QPoint shared = m_above->mapToGlobal(QPoint(20, 20));
    QVERIFY(m_below->geometry().contains(shared));
    const auto found = windowAt(shared);
    QVERIFY(found);
    QCOMPARE(found->id, id(*m_above));
    QCOMPARE(found->area, QRect(m_above->mapToGlobal(QPoint()), m_above->size()));
    m_below->raise();
    QTRY_COMPARE(seenAt(shared), id(*m_below));
    QCOMPARE(seenAt(shared, {id(*m_below)}), id(*m_above));

    const auto desktop = windowAt({1900, 1000});
    QVERIFY(desktop);
    QCOMPARE(desktop->area, QRect(0, 0, 1920, 1080));
    QVERIFY(desktop->id != id(*m_above) && desktop->id != id(*m_below));
}

void TestWindowTree::hiddenOnesDontCount()
{
    const QPoint shared = m_above->mapToGlobal(QPoint(20, 20));
    QVERIFY(isShownOnServer(id(*m_above)));
    passPointerThrough(id(*m_above));
    QTRY_COMPARE(seenAt(shared), id(*m_below));
    catchPointer(id(*m_above));
    QTRY_COMPARE(seenAt(shared), id(*m_above));
    m_above->setMask(QRegion(100, 100, 50, 50));
    QTRY_COMPARE(seenAt(shared), id(*m_below));
    m_above->clearMask();
    QTRY_COMPARE(seenAt(shared), id(*m_above));

    m_above->showMinimized();
    QTRY_COMPARE(seenAt(shared), id(*m_below));
    QVERIFY(!isShownOnServer(id(*m_above)));
    m_below->hide();
    QTRY_COMPARE(windowAt(shared)->area.size(), QSize(1920, 1080));
    QVERIFY(!isShownOnServer(id(*m_below)));
}

void TestWindowTree::deepestWins()
{
    QWidget lower(m_above.get());
    QWidget upper(m_above.get());
    QWidget inner(&upper);
    for (QWidget *child : {&lower, &upper, &inner})
        child->setAttribute(Qt::WA_NativeWindow);
    lower.setGeometry(50, 50, 200, 150);
    upper.setGeometry(100, 80, 200, 150);
    inner.setGeometry(10, 10, 50, 50);
    for (QWidget *child : {&lower, &upper, &inner})
        child->show();
    QTRY_COMPARE(seenAt(m_above->mapToGlobal(QPoint(60, 60))), id(lower));
    QCOMPARE(seenAt(m_above->mapToGlobal(QPoint(180, 180))), id(upper));
    const auto found = windowAt(inner.mapToGlobal(QPoint(5, 5)));
    QCOMPARE(found->id, id(inner));
    QCOMPARE(found->area, QRect(inner.mapToGlobal(QPoint()), inner.size()));
    upper.hide();
    QTRY_COMPARE(seenAt(m_above->mapToGlobal(QPoint(180, 180))), id(lower));
}

void TestWindowTree::framesBelongToTheirWindow()
{
    const QRect frame = m_above->frameGeometry();
    QVERIFY(frame.top() < m_above->geometry().top());
    const auto found = windowAt({frame.center().x(), frame.top() + 4});
    QVERIFY(found);
    QCOMPARE(found->id, id(*m_above));
    QCOMPARE(found->area.size(), m_above->size());
}

// They lie past the window manager, as does what spans the desktop.
void TestWindowTree::menusCount()
{
    const auto menu = open({320, 270, 100, 100}, Qt::ToolTip);
    QVERIFY(menu);
    QTRY_COMPARE(seenAt(middle(*menu)), id(*menu));
    QCOMPARE(seenAt(middle(*menu), {id(*menu)}), id(*m_above));
}

void TestWindowTree::spansTheDesktop()
{
    const auto overlay = open({0, 0, 10, 10}, Qt::ToolTip);
    QVERIFY(overlay);
    spanDesktop(id(*overlay));
    QTRY_COMPARE(overlay->geometry(), QRect(0, 0, 1920, 1080));
    QTRY_COMPARE(seenAt({1900, 1000}), id(*overlay));
}

QTEST_MAIN(TestWindowTree)
#include "tst_windowtree.moc"
