// SPDX-License-Identifier: MIT
#include "browser/weblogindialog.h"

#include "browser/loginveil.h"
#include "browser/pagecalls.h"
#include "browser/qmbbrower.h"
#include "browser/userinfomanager.h"
#include "browser/webinterface.h"
#include "browser/webviewloader.h"
#include "controls/toast.h"
#include "controls/windowshadow.h"
#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "MediaKits/Logger/logger.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr QSize pageSize(551, 320);
constexpr int loginViewEvent = 5;
constexpr int loginSuccessEvent = 6;
constexpr int loginClosedEvent = 7;
constexpr int alertMs = 4000;
constexpr int longestAlert = 60; // characters
// A page is shown before the last of its pictures has come.
constexpr int veilMs = 1200;
constexpr char isLoggedProperty[] = "isLogged";

bool isSameOrigin(const QUrl &one, const QUrl &other)
{
    const int port = one.scheme() == QLatin1String("https") ? 443 : 80;
    return one.scheme() == other.scheme() && one.host() == other.host() &&
           one.port(port) == other.port(port);
}

// Without what would let a reader of the log log in.
QJsonValue masked(const QJsonValue &value)
{
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (QJsonValueRef element : array)
            element = masked(element);
        return array;
    }
    QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const bool isSecret = entry.key().contains(QLatin1String("token"), Qt::CaseInsensitive);
        entry.value() = isSecret ? QJsonValue(QStringLiteral("***")) : masked(entry.value());
    }
    return value.isObject() ? object : value;
}

QString withoutToken(const QString &text)
{
    const QJsonObject user = QJsonDocument::fromJson(text.toUtf8()).object();
    return QString::fromUtf8(QJsonDocument(masked(user).toObject()).toJson(QJsonDocument::Compact));
}

} // namespace

WebLoginDialog::WebLoginDialog(QWidget *parent)
    : WebLoginDialog(QUrl(WebInterface::instance().loginUrl()), parent)
{
}

WebLoginDialog::WebLoginDialog(const QUrl &address, QWidget *parent)
    : QDialog(parent), m_address(address)
{
    setUpWindow();
    WebViewLibrary *library = m_address.isEmpty() ? nullptr : openWebViewLibrary();
    if (library != nullptr)
        setUpBrowser(*library);
    else
        closeFor({m_address.isEmpty() ? LoginProblem::NoAnswer : LoginProblem::NoView});
    OskDataTracker::instance().trackTableEvent(loginViewEvent);
}

WebLoginDialog::~WebLoginDialog() = default;

void WebLoginDialog::setUpWindow()
{
    setModal(true);
    setWindowFlag(Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(QStringLiteral("Dialog"));
    resize(pageSize);
    new WindowShadow(this);
}

void WebLoginDialog::setUpBrowser(WebViewLibrary &library)
{
    m_bar = new LoginBar(this);
    m_bar->setObjectName(QStringLiteral("loginBar"));
    m_bar->hide();
    m_browser = new QMBBrower(library, this);
    m_browser->setObjectName(QStringLiteral("mb"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    layout->addWidget(m_browser, 1);
    m_veil = new LoginVeil(this);
    for (const auto *place : {m_bar, m_veil->findChild<LoginBar *>()})
        connect(place, &LoginBar::closeClicked, this, &QDialog::reject);

    m_browser->setTransparent(true);
    connect(m_browser, &QMiniblinkBrowser::urlChanged, this, &WebLoginDialog::onUrlChanged);
    connect(m_browser, &QMiniblinkBrowser::loadingFinish, this, &WebLoginDialog::onLoadingFinish);
    connect(m_browser, &QMiniblinkBrowser::alertBox, this, &WebLoginDialog::onAlert);
    connect(m_browser, &QMBBrower::windowControlActivated, this, &WebLoginDialog::onWindowControl);
    // What a page does after the end is nothing to the user.
    connect(this, &QDialog::finished, m_browser, [this] { m_browser->disconnect(this); });

    m_browser->setLocalStorageFullPath(tempDir());
    m_browser->setScriptOrigin(m_address);
    m_browser->setUncheckedHosts(
        AppConfig::instance().serviceLoginUnchecked.split(QLatin1Char(','), Qt::SkipEmptyParts));
    m_browser->loadUrl(QString::fromLatin1(m_address.toEncoded()));
    registerEvents();
}

void WebLoginDialog::registerEvents()
{
    m_browser->registerEvent(QStringLiteral("SetUserInfo"), [this](const QVariantList &arguments) {
        return setUserInfo(arguments);
    });
    m_browser->registerEvent(QStringLiteral("GetDeviceInfo"),
                             [](const QVariantList &) { return deviceText(); });
    m_browser->registerEvent(QStringLiteral("OpenNewWindow"), openNewWindow);
    m_browser->registerEvent(QStringLiteral("SetMarkPoint"), setMarkPoint);
    m_browser->registerEvent(QStringLiteral("GetTrackHeader"), [](const QVariantList &) {
        return VolcDataTracker::instance().headerAsJson();
    });
}

void WebLoginDialog::setVisible(bool visible)
{
    const bool hadKeyboard = !visible && isActiveWindow();
    QDialog::setVisible(visible);
    if (hadKeyboard)
        DialogFrame::giveKeyboardBack(*this);
}

// By the event loop: the dialog may be about to be run.
void WebLoginDialog::closeFor(const LoginProblem &problem)
{
    m_problem = problem;
    QTimer::singleShot(0, this, &QDialog::reject);
}

// QDialog's own would return when the window is hidden.
int WebLoginDialog::exec()
{
    const QPointer<WebLoginDialog> dialog = this;
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    show();
    loop.exec(QEventLoop::DialogExec);
    return dialog ? result() : Rejected;
}

void WebLoginDialog::onUrlChanged(const QString &url)
{
    const QUrl address(url);
    const bool isOwn = isSameOrigin(address, m_address);
    m_bar->setText(address.host());
    m_bar->setVisible(!isOwn);
    if (isOwn)
        QTimer::singleShot(veilMs, this, &WebLoginDialog::liftVeil);
    else
        liftVeil();
}

void WebLoginDialog::liftVeil()
{
    if (m_veil->isHidden())
        return;
    m_veil->hide();
    m_browser->setFocus();
}

void WebLoginDialog::onLoadingFinish(const QString &, LoadingResult result,
                                     const QString &failedReason)
{
    if (result != LoadFailed) {
        liftVeil();
        return;
    }
    CLOG(ERROR, "default") << "登录页面加载失败 " << failedReason;
    if (!isLogged())
        m_problem = {LoginProblem::NoPage, failedReason};
    reject();
}

// The user sees whose words they are, and never more than one of them.
void WebLoginDialog::onAlert(const QString &text)
{
    const QString whose = m_bar->isHidden() ? QString() : m_bar->text() + tr("：");
    delete m_alert.data();
    m_alert = Toast::showToast(whose + text.left(longestAlert), alertMs, Toast::centred,
                               Toast::centred, this);
}

void WebLoginDialog::onWindowControl(int control, const QVariantList &arguments)
{
    switch (control) {
    case QMBBrower::SetWindowSize:
        if (arguments.size() >= 2) {
            const QSize most = screen()->availableSize();
            setFixedSize(qBound(1, arguments[0].toInt(), most.width()),
                         qBound(1, arguments[1].toInt(), most.height()));
        }
        break;
    case QMBBrower::ShowWindow:
        show();
        break;
    case QMBBrower::HideWindow:
        hide();
        break;
    case QMBBrower::CloseWindow:
        reject();
        if (!isLogged())
            OskDataTracker::instance().trackTableEvent(loginClosedEvent);
        break;
    case QMBBrower::CenterWindow:
        centre();
        break;
    default:
        break;
    }
}

QVariant WebLoginDialog::setUserInfo(const QVariantList &arguments)
{
    if (arguments.isEmpty())
        return {};
    const QString text = arguments[0].toString();
    UserInfoManager::instance().setUserInfoJson(text);
    UserInfoManager::instance().markLoggedIn();
    CLOG(INFO, "default") << withoutToken(text);
    setProperty(isLoggedProperty, true);
    OskDataTracker::instance().trackTableEvent(loginSuccessEvent);
    return {};
}

bool WebLoginDialog::isLogged() const
{
    return property(isLoggedProperty).toBool();
}

void WebLoginDialog::centre()
{
    QRect around = screen()->availableGeometry();
    if (const QWidget *parent = parentWidget())
        around = QRect(parent->mapToGlobal(QPoint()), parent->size());
    QRect place(QPoint(), size());
    place.moveCenter(around.center());
    move(place.topLeft());
}
