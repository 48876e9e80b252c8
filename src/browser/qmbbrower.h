// SPDX-License-Identifier: MIT
#pragma once

#include "browser/qminiblinkbrowser.h"

#include <QMap>

/// A web view whose page may call the program by the names on `window.external`: those that control
/// the window, and registered events. Only pages of one origin may.
class QMBBrower : public QMiniblinkBrowser
{
    Q_OBJECT

public:
    using Handler = std::function<QVariant(const QVariantList &arguments)>;

    /// The numbers of windowControlActivated().
    enum Control {
        SetWindowSize = 1,
        SetWindowCaption,
        ShowWindow,
        HideWindow,
        MinWindow,
        MaxWindow,
        RestoreWindow,
        CloseWindow,
        CenterWindow,
    };

    explicit QMBBrower(WebViewLibrary &library, QWidget *parent = nullptr);

    /// The pages that may call are those of this address's scheme, host and port. Before it is set
    /// none is.
    void setScriptOrigin(const QUrl &address);

    /// Lets the page call `window.external.NAME`; replaces an earlier handler of the name.
    void registerEvent(const QString &name, const Handler &handler);
    void registerEvents(const QStringList &names, const Handler &handler);
    void removeEvent(const QString &name);

signals:
    void windowControlActivated(int control, const QVariantList &arguments);

protected:
    void onBrowserEvent(const BrowserEvent &event) override;

private:
    void bindFunctions();
    bool canPublish() const;
    QString wholeScript() const;
    QVariant doEvent(const QVariantList &arguments) const;

    QMap<QString, Handler> m_events;
};
