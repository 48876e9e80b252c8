// SPDX-License-Identifier: MIT
#include "mainwindow/loginstage.h"

#include "browser/webinterface.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/Logger/logger.h"
#include "resources/look.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QtTest>

#include <unistd.h>

namespace {

qint64 parentOf(qint64 pid)
{
    const QList<QByteArray> lines = contentOf("/proc/%1/status"_s.arg(pid)).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("PPid:"))
            return line.mid(5).trimmed().toLongLong();
    }
    return 0;
}

bool isOurs(qint64 pid)
{
    while (pid > 1 && pid != getpid())
        pid = parentOf(pid);
    return pid > 1;
}

} // namespace

LoginStage::LoginStage()
{
    QApplication::setQuitOnLastWindowClosed(false);
    const QString service = m_service.address();
    writeTestFile(
        appDir() + "/main.ini"_s,
        "[Service]\nconfiguration=%1\nuser=%1\ncollector=%1\nevents=%1\n"_s.arg(service).toUtf8());
    QFile::remove(appDir() + "/module"_s);
    QVERIFY(QFile::link(builtProgram("module"_s), appDir() + "/module"_s));
    Logger::init(builtProgram("log.conf"_s), logDir());
    QVERIFY(Look::apply());

    m_service.setPage("/api/config/urls"_s, {R"({"code":0,"data":{"web":{"login":")" +
                                             service.toUtf8() + R"(/login"}}})"});
    WebInterface::instance();
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTRY_COMPARE(WebInterface::instance().loginUrl(), service + "/login"_s);
}

bool hasEngine()
{
    return contentOf("/proc/self/maps"_s).contains("WebEngine");
}

QList<qint64> engineProcesses()
{
    QList<qint64> found;
    for (const qint64 pid : processesWith("QtWebEngineProcess"_s)) {
        if (isOurs(pid))
            found += pid;
    }
    return found;
}

// They are made by another of them, and make none themselves.
QList<qint64> renderProcesses()
{
    const QList<qint64> all = engineProcesses();
    QList<qint64> parents;
    for (const qint64 pid : all)
        parents += parentOf(pid);
    QList<qint64> found;
    for (const qint64 pid : all) {
        if (all.contains(parentOf(pid)) && !parents.contains(pid))
            found += pid;
    }
    return found;
}
