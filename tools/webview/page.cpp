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
        m_isCancelled = false;
        m_failedReason.clear();
    });
    connect(this, &QWebEnginePage::loadFinished, this, &Page::onLoadFinished);
    connect(this, &QWebEnginePage::renderProcessTerminated, this, [this](auto status) {
        if (status == NormalTerminationStatus)
            return;
        m_failedReason = tr("网页意外中止");
        onLoadFinished(false);
    });
}

void Page::restrict()
{
    for (const auto attribute : switchedOff)
        settings()->setAttribute(attribute, false);
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
            [this](QWebEngineDownloadItem *item) {
                item->cancel();
                m_isCancelled = true;
            });
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

void Page::askFor(const QUrl &address)
{
    m_askedFor = address;
    m_isLoading = true;
    m_hasBegun = false;
}

void Page::stopLoading()
{
    m_isCancelled = m_isLoading;
    triggerAction(Stop);
}

bool Page::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    const bool isOwn = type == NavigationTypeTyped && url == m_askedFor;
    const bool isInnerPart = !isMainFrame && (url.scheme() == QLatin1String("about") ||
                                              url.scheme() == QLatin1String("data") ||
                                              url.scheme() == QLatin1String("blob"));
    if (isOwn || isOfWeb(url) || isInnerPart)
        return true;
    m_isCancelled = isMainFrame;
    return false;
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
    m_failedReason = tr("%1 的证书不可信：%2").arg(error.url().host(), error.errorDescription());
    return false;
}

void Page::onLoadFinished(bool isGood)
{
    m_isLoading = false;
    m_hasBegun = m_hasBegun || isGood;
    LoadingResult result = LoadSucceeded;
    if (!isGood)
        result = m_isCancelled ? LoadCancelled : LoadFailed;
    m_client.onLoadingFinished(url().toString(), result, m_failedReason);
}
