// SPDX-License-Identifier: MIT
#include "webview/page.h"

#include <QWebEngineDownloadItem>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineProfile>
#include <QWebEngineQuotaRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

namespace {

// Of what the engine has on by itself.
constexpr QWebEngineSettings::WebAttribute switchedOff[] = {
    QWebEngineSettings::JavascriptCanOpenWindows,
    QWebEngineSettings::LocalContentCanAccessFileUrls,
    QWebEngineSettings::LocalStorageEnabled, // switched on again with a path
    QWebEngineSettings::ErrorPageEnabled,
    QWebEngineSettings::PdfViewerEnabled,
    QWebEngineSettings::WebGLEnabled,
    QWebEngineSettings::AutoLoadIconsForPage,
    QWebEngineSettings::HyperlinkAuditingEnabled,
};

bool isOfWeb(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

QString bridgeName()
{
    return QStringLiteral("bridge");
}

// What is dragged out of a page would be dragged from a window that isn't on the screen.
QWebEngineScript scriptAgainstDrags()
{
    QWebEngineScript script;
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(true);
    script.setSourceCode(QStringLiteral(
        "addEventListener('dragstart', event => event.preventDefault(), {capture: true})"));
    return script;
}

} // namespace

Page::Page(QWebEngineProfile &profile, WebViewClient &client)
    : QWebEnginePage(&profile), m_client(client)
{
    restrict();
    refuseRequests();
    connect(this, &QWebEnginePage::titleChanged, this,
            [this](const QString &title) { m_client.onTitleChanged(title); });
    connect(this, &QWebEnginePage::urlChanged, this, [this](const QUrl &url) {
        m_hasBegun = true;
        m_client.onUrlChanged(url.toString());
    });
    connect(this, &QWebEnginePage::loadStarted, this, [this] {
        m_isLoading = true;
        m_isStopped = false;
        m_failedReason.clear();
    });
    connect(this, &QWebEnginePage::loadFinished, this, &Page::onLoadFinished);
    // Whatever the engine takes its end for: it may have lost who would know.
    connect(this, &QWebEnginePage::renderProcessTerminated, this, [this] {
        const QString reason = m_hasBegun ? tr("网页意外中止")
                                          : tr("网页的进程没有启动，如果重试无效，请重新启动程序");
        m_client.onLoadingFinished(url().toString(), LoadFailed, reason);
    });
}

void Page::fallSilent()
{
    m_alive.reset();
    m_bridge.setOrigin({});
    disconnect(this, nullptr, this, nullptr);
}

void Page::restrict()
{
    for (const auto attribute : switchedOff)
        settings()->setAttribute(attribute, false);
    scripts().insert(scriptAgainstDrags());
    settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

void Page::refuseRequests()
{
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl &origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::fullScreenRequested, this,
            [](QWebEngineFullScreenRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::quotaRequested, this,
            [](QWebEngineQuotaRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
            [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
    connect(profile(), &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadItem *item) { item->cancel(); });
}

void Page::injectBridge()
{
    QWebEngineScript script;
    script.setName(bridgeName());
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(false);
    script.setSourceCode(m_bridge.documentScript());
    scripts().remove(scripts().findScript(bridgeName()));
    scripts().insert(script);
}

void Page::expectLoad(const QString &ownScheme)
{
    m_ownScheme = ownScheme;
    m_isLoading = true;
    m_hasBegun = false;
}

void Page::loadWebPage(const QUrl &address)
{
    expectLoad({});
    if (isOfWeb(address)) {
        load(address);
        return;
    }
    // The engine would run a script that is written as an address.
    m_isLoading = false;
    m_client.onLoadingFinished(address.toString(), LoadFailed, tr("不是网页的地址"));
}

void Page::loadFile(const QUrl &address)
{
    expectLoad(address.scheme());
    load(address);
}

void Page::loadHtml(const QString &html, const QUrl &baseUrl)
{
    // That is how the engine brings it in.
    expectLoad(QStringLiteral("data"));
    setHtml(html, baseUrl);
}

void Page::stopLoading()
{
    m_isStopped = m_isLoading;
    triggerAction(Stop);
}

bool Page::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    const bool isOwn = type == NavigationTypeTyped && url.scheme() == m_ownScheme;
    const bool isInnerPart = !isMainFrame && (url.scheme() == QLatin1String("about") ||
                                              url.scheme() == QLatin1String("data") ||
                                              url.scheme() == QLatin1String("blob"));
    return isOwn || isOfWeb(url) || isInnerPart;
}

QWebEnginePage *Page::createWindow(WebWindowType)
{
    return nullptr;
}

QStringList Page::chooseFiles(FileSelectionMode, const QStringList &, const QStringList &)
{
    return {};
}

void Page::javaScriptAlert(const QUrl &, const QString &message)
{
    if (m_alive)
        m_client.onAlert(message);
}

bool Page::javaScriptConfirm(const QUrl &, const QString &)
{
    return false;
}

bool Page::javaScriptPrompt(const QUrl &origin, const QString &message, const QString &defaultValue,
                            QString *result)
{
    return m_bridge.answer(origin, message, defaultValue, result);
}

// A page's notes may hold what was typed into it.
void Page::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                    const QString &)
{
}

bool Page::certificateError(const QWebEngineCertificateError &error)
{
    if (error.isOverridable() && m_uncheckedHosts.contains(error.url().host(), Qt::CaseInsensitive))
        return true;
    m_failedReason = tr("%1 的证书不可信").arg(error.url().host());
    return false;
}

void Page::onLoadFinished(bool isGood)
{
    m_isLoading = false;
    m_hasBegun = m_hasBegun || isGood;
    if (isGood) {
        runJavaScript(QStringLiteral("var isShown = true"), QWebEngineScript::ApplicationWorld);
        m_client.onLoadingFinished(url().toString(), LoadSucceeded, {});
        return;
    }
    // What was refused, became a download or was stopped hasn't failed: the document before it
    // stays.
    const auto tell = [this, alive = std::weak_ptr<bool>(m_alive), address = url().toString(),
                       reason = m_failedReason](const QVariant &kind) {
        if (alive.expired())
            return;
        const bool isThere = m_isStopped || kind.toString() == QLatin1String("boolean");
        m_client.onLoadingFinished(address, isThere ? LoadCancelled : LoadFailed, reason);
    };
    runJavaScript(QStringLiteral("typeof isShown"), QWebEngineScript::ApplicationWorld, tell);
}
