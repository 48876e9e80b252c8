// SPDX-License-Identifier: MIT
#include "browser/qmbbrower.h"

#include "browser/scriptconversion.h"

namespace {

struct BoundFunction
{
    const char *name;
    const char *boundTo;
    int argumentCount;
    int control; // 0 for the call of an event
};

constexpr BoundFunction boundFunctions[] = {
    {"SetWindowSize", "_JsSetWindowSize", 2, QMBBrower::SetWindowSize},
    {"SetWindowCaption", "_JsSetWindowCaption", 4, QMBBrower::SetWindowCaption},
    {"ShowWindow", "_JsShowWindow", 1, QMBBrower::ShowWindow},
    {"HideWindow", "_JsHideWindow", 0, QMBBrower::HideWindow},
    {"MinWindow", "_JsMinWindow", 0, QMBBrower::MinWindow},
    {"MaxWindow", "_JsMaxWindow", 0, QMBBrower::MaxWindow},
    {"RestoreWindow", "_JsRestoreWindow", 0, QMBBrower::RestoreWindow},
    {"CloseWindow", "_JsCloseWindow", 0, QMBBrower::CloseWindow},
    {"CenterWindow", "_JsCenterWindow", 0, QMBBrower::CenterWindow},
    {"JsDoEvent", "_JsDoEvent", 2, 0},
};

constexpr char eventTemplate[] =
    "\n         if(_JsDoEvent){\n            window.external.%1=function(){return "
    "_JsDoEvent('%1',arguments)}\n         }\n         ";

QString publishingScript(const QStringList &names)
{
    QString script;
    for (const QString &name : names)
        script += QString::fromLatin1(eventTemplate).arg(name);
    return script;
}

QString assignments()
{
    QString script = QStringLiteral("window.external={}");
    for (const BoundFunction &row : boundFunctions)
        script += QStringLiteral("\nwindow.external.%1=%2")
                      .arg(QLatin1String(row.name), QLatin1String(row.boundTo));
    return script;
}

} // namespace

QMBBrower::QMBBrower(WebViewLibrary &library, QWidget *parent) : QMiniblinkBrowser(library, parent)
{
}

void QMBBrower::setScriptOrigin(const QUrl &address)
{
    view().setScriptOrigin(address);
}

void QMBBrower::registerEvent(const QString &name, const Handler &handler)
{
    registerEvents({name}, handler);
}

void QMBBrower::registerEvents(const QStringList &names, const Handler &handler)
{
    for (const QString &name : names)
        m_events.insert(name, handler);
    view().setStartScript(wholeScript());
    if (canPublish())
        view().runScript(publishingScript(names));
}

void QMBBrower::removeEvent(const QString &name)
{
    m_events.remove(name);
    view().setStartScript(wholeScript());
}

void QMBBrower::onBrowserEvent(const BrowserEvent &event)
{
    if (event.kind() == BrowserEvent::UrlChanged || event.kind() == BrowserEvent::LoadAskedFor) {
        bindFunctions();
        view().setStartScript(wholeScript());
        // As one text, so that no script of the page runs in between.
        view().runScript(canPublish() ? wholeScript() : assignments());
    }
    QMiniblinkBrowser::onBrowserEvent(event);
}

void QMBBrower::bindFunctions()
{
    for (const BoundFunction &row : boundFunctions) {
        const int control = row.control;
        view().bindFunction(QLatin1String(row.boundTo), row.argumentCount,
                            [this, control](const QVector<ScriptValue> &values) {
                                const QVariantList arguments = fromScript(values);
                                if (control == 0)
                                    return toScript(doEvent(arguments));
                                emit windowControlActivated(control, arguments);
                                return toScript({});
                            });
    }
}

// A document that has yet to begin gets the names by the start script.
bool QMBBrower::canPublish() const
{
    return view().isDocumentReady() || !view().isLoading();
}

QString QMBBrower::wholeScript() const
{
    return assignments() + QLatin1Char('\n') + publishingScript(m_events.keys());
}

QVariant QMBBrower::doEvent(const QVariantList &arguments) const
{
    if (arguments.size() != 2 || arguments[1].type() != QVariant::List)
        return {};
    const Handler handler = m_events.value(arguments[0].toString());
    if (!handler)
        return {};
    QVariantList list = arguments[1].toList();
    // A page may pass its arguments as one array.
    if (list.size() == 1 && list[0].type() == QVariant::List)
        list = list[0].toList();
    return handler(list);
}
