// SPDX-License-Identifier: MIT
#pragma once

#include "browser/loginnotice.h"
#include "browser/webview.h"

#include <QDialog>
#include <QPointer>

class LoginBar;
class LoginVeil;
class QMBBrower;
class Toast;

/// The window of the login page, which the page controls. It closes when there is no page.
class WebLoginDialog : public QDialog
{
    Q_OBJECT

public:
    /// The page that the configuration service tells of.
    explicit WebLoginDialog(QWidget *parent = nullptr);
    /// @param address of the page; empty for one that isn't known
    WebLoginDialog(const QUrl &address, QWidget *parent);
    ~WebLoginDialog() override;

    /// Why it has closed by itself.
    const LoginProblem &problem() const { return m_problem; }

    void setVisible(bool visible) override;
    /// Returns when the dialog has finished. The page may hide it meanwhile.
    int exec() override;

private:
    void setUpWindow();
    void setUpBrowser(WebViewLibrary &library);
    void registerEvents();
    void closeFor(const LoginProblem &problem);
    void onUrlChanged(const QString &url);
    void onLoadingFinish(const QString &url, LoadingResult result, const QString &failedReason);
    void onAlert(const QString &text);
    void onWindowControl(int control, const QVariantList &arguments);
    QVariant setUserInfo(const QVariantList &arguments);
    bool isLogged() const;
    void centre();
    void liftVeil();

    const QUrl m_address;
    LoginProblem m_problem;
    LoginBar *m_bar = nullptr; // over a page that isn't the service's own
    QMBBrower *m_browser = nullptr;
    LoginVeil *m_veil = nullptr;
    QPointer<Toast> m_alert;
};
