// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class Page;
class QWebEngineProfile;
class QWebEngineView;
class QWidget;

/// What the engine has of a page. A page goes before its profile, and a view before its page.
struct EngineParts
{
    EngineParts();
    EngineParts(EngineParts &&other) noexcept;
    ~EngineParts();
    EngineParts &operator=(EngineParts &&) = delete;

    std::unique_ptr<QWebEngineProfile> profile;
    std::unique_ptr<Page> page;
    std::unique_ptr<QWebEngineView> view;
};

/// A view that is to go while a list of its page is down: the engine calls what is gone when a view
/// goes before its list. Deletes itself when both are gone, before the program ends at the latest.
class EndingView : public QObject
{
    Q_OBJECT

public:
    EndingView(EngineParts parts, QWidget &list);

private:
    void hurry();

    EngineParts m_parts;
    QPointer<QWidget> m_list;
};
