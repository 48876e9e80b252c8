// SPDX-License-Identifier: MIT
#pragma once

#include "browser/webview.h"

#include <QMap>

/// The functions that pages of one origin may call: the scripts that make them known, and the calls
/// themselves, which arrive as the texts of a prompt.
class Bridge
{
public:
    Bridge();

    void setOrigin(const QUrl &address);
    void bind(const QString &name, const ScriptFunction &function);
    void setStartScript(const QString &script) { m_startScript = script; }

    /// For each document, before its own scripts; empty without an origin.
    QString documentScript() const;
    /// `script`, so that it does nothing in a document of another origin.
    QString guarded(const QString &script) const;

    /// Answers the prompt of a page.
    /// @param origin of the document that prompts
    /// @return false for one that is no call, or by somebody who may not call
    bool answer(const QUrl &origin, const QString &message, const QString &call, QString *result);

private:
    QString m_origin; // as a page's script knows it
    QString m_key;    // only the bridge's own script knows it
    QMap<QString, ScriptFunction> m_functions;
    QString m_startScript;
};
