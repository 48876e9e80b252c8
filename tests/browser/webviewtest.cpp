// SPDX-License-Identifier: MIT
#include "browser/webviewtest.h"

#include "support/testfile.h"

void WebViewTest::initTestCase()
{
    QVERIFY(!contentOf("/proc/self/maps"_s).contains("WebEngine"));
    m_library = openWebViewLibrary();
    QVERIFY(m_library != nullptr);
    QVERIFY(contentOf("/proc/self/maps"_s).contains("WebEngine"));
}

void WebViewTest::init()
{
    m_reports.clear();
    m_results.clear();
}

void WebViewTest::make(const QUrl &origin)
{
    m_browser = std::make_unique<QMBBrower>(*m_library);
    m_browser->setScriptOrigin(origin);
    m_browser->setLocalStorageFullPath(m_storage.path());
    m_browser->registerEvent("Report"_s, [this](const QVariantList &arguments) {
        m_reports += arguments.value(0).toString();
        return QVariant();
    });
    connect(m_browser.get(), &QMiniblinkBrowser::loadingFinish, this,
            [this](const QString &, LoadingResult result, const QString &reason) {
                m_results += result;
                m_reason = reason;
            });
    m_browser->resize(400, 300);
}
