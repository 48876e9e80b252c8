// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/FunctionPage/ScreenRecord/windowcapwidget.h"
#include "support/guisupport.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

/// The page in a window of its own before a coloured wall, driven by mouse and keys, with the real
/// tools.
class RecordPageTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int limitMs = 20000;
    static const QColor wallColour;
    static const QColor pageColour;

    static Screencap &engine() { return Screencap::instance(); }
    QString folder() const { return m_folder->filePath("录 像"_s); }
    template<class Widget = QAbstractButton>
    Widget *part(const char *name) const
    {
        return child<Widget>(*m_page, name);
    }
    bool isReady() const { return part<QWidget>("wdtSettting")->isEnabled(); }
    QString clock() const { return part<QLabel>("lblTime")->text(); }
    QString startText() const { return part("wbnCapStartPause")->text(); }
    /// Pixels of the screen for one of the program.
    int ratio() const { return m_page->devicePixelRatio(); }
    WindowCapWidget *overlay() const
    {
        return qobject_cast<WindowCapWidget *>(visibleWindow("WindowCapWidget"));
    }
    /// Does it once the countdown is shown, which runs in an event loop of its own.
    template<class Act>
    void inCountdown(Act act) const
    {
        auto *looks = new QTimer(m_page.get());
        connect(looks, &QTimer::timeout, looks, [looks, act] {
            if (!visibleWindow("CountdownWnd"))
                return;
            looks->stop();
            looks->deleteLater();
            act();
        });
        looks->start(20);
    }
    /// @param time that the clock has to reach
    void awaitRecording(const QString &time);
    /// Ends the recording, and waits for the page to be as before it.
    void stopByKey();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QWidget> m_wall;
    std::unique_ptr<ScreencapFuncionPage> m_page;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
