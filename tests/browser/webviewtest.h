// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pageserver.h"
#include "browser/qmbbrower.h"
#include "browser/webviewloader.h"

#include <QtTest>

/// A test of the real view, with pages of a real server.
class WebViewTest : public QObject
{
    Q_OBJECT

protected:
    /// A new view, whose pages may call from one origin.
    void make(const QUrl &origin);

    WebViewLibrary *m_library = nullptr;
    QTemporaryDir m_storage;
    std::unique_ptr<QMBBrower> m_browser;
    QStringList m_reports; ///< what pages say by external.Report()
    QVector<LoadingResult> m_results;
    QString m_reason;

private slots:
    void initTestCase();
    void init();
    void cleanup() { m_browser.reset(); }
};
