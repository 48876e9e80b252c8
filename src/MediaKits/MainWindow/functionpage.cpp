// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/functionpage.h"

#include "controls/iconpixmap.h"
#include "controls/widgetbutton.h"
#include "MediaKits/DataTracker/currentfunction.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/FunctionPage/Framework/Page/lazypage.h"
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/MainWindow/functionpages.h"
#include "MediaKits/MainWindow/homepage.h"
#include "MediaKits/MainWindow/navigationtracking.h"
#include "ui_functionpage.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVariant>

namespace {

constexpr int buttonHeight = 44;
// All of them fit into half of a laptop's 768 lines, as there are on one that shows all at 200 %.
constexpr int leastButtonHeight = 24;
constexpr int iconSide = 24;

WidgetButton *makeButton(const FunctionPageEntry &entry, QWidget *parent)
{
    auto *button = new WidgetButton(parent);
    button->setObjectName(entry.buttonName);
    button->setProperty("cls", QStringLiteral("main"));
    button->setAccessibleName(entry.label);
    button->setCheckable(true);
    button->setMinimumHeight(leastButtonHeight);
    button->setMaximumHeight(buttonHeight);

    auto *icon = new QLabel(button);
    icon->setProperty("cls", QStringLiteral("icon"));
    icon->setFixedSize(iconSide, iconSide);
    icon->setPixmap(iconPixmap(entry.icon + QLatin1String(".png"), icon->size()));
    auto *text = new QLabel(entry.label, button);
    text->setProperty("cls", QStringLiteral("text"));
    for (QLabel *label : {icon, text})
        label->setAttribute(Qt::WA_TransparentForMouseEvents);

    auto *row = new QHBoxLayout(button);
    row->setContentsMargins(16, 0, 8, 0);
    row->setSpacing(12);
    row->addWidget(icon);
    row->addWidget(text, 1);

    QObject::connect(button, &QAbstractButton::toggled, icon, [icon, path = entry.icon](bool on) {
        const QString name = path + (on ? QLatin1String("_on.png") : QLatin1String(".png"));
        icon->setPixmap(iconPixmap(name, icon->size()));
    });
    return button;
}

} // namespace

FunctionPage::FunctionPage(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::FunctionPage>()), m_buttons(new QButtonGroup(this))
{
    m_ui->setupUi(this);
    addPages();
    connectNavigation();
}

FunctionPage::~FunctionPage() = default;

void FunctionPage::addPages()
{
    for (const FunctionPageEntry &entry : functionPages()) {
        const int index = m_ui->skdWdtFunction->count();
        WidgetButton *button = makeButton(entry, m_ui->wdtLeft);
        m_ui->lytButtons->insertWidget(index, button, 1);
        m_buttons->addButton(button, index);

        QWidget *page = entry.create(m_ui->skdWdtFunction);
        page->setObjectName(QStringLiteral("page%1").arg(index));
        m_ui->skdWdtFunction->addWidget(page);
    }
    m_buttons->button(0)->setChecked(true);
    connect(m_ui->skdWdtFunction, &QStackedWidget::currentChanged, this, &FunctionPage::yieldRoom);
    yieldRoom(0);
}

// A small window scrolls a page that has no room, but not for the sake of a larger one behind it.
void FunctionPage::yieldRoom(int current)
{
    for (int i = 0; i < m_ui->skdWdtFunction->count(); ++i) {
        const auto policy = i == current ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        m_ui->skdWdtFunction->widget(i)->setSizePolicy(policy, policy);
    }
}

QVector<LazyPage *> FunctionPage::workingPages() const
{
    QVector<LazyPage *> working;
    for (int i = 0; i < m_ui->skdWdtFunction->count(); ++i) {
        auto *page = qobject_cast<LazyPage *>(m_ui->skdWdtFunction->widget(i));
        if (page && page->isWorking())
            working += page;
    }
    return working;
}

QString FunctionPage::leaveQuestion() const
{
    const QVector<LazyPage *> working = workingPages();
    return working.isEmpty() ? QString() : working.last()->leaveQuestion();
}

void FunctionPage::finishWork()
{
    for (LazyPage *page : workingPages())
        page->finishWork();
}

ScreencapFuncionPage *FunctionPage::recordPage() const
{
    return m_ui->skdWdtFunction->findChild<ScreencapFuncionPage *>();
}

void FunctionPage::connectNavigation()
{
    connect(m_buttons, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (!checked)
            return;
        changePage(id);
        trackNavigation(QStringLiteral("侧边栏"), QStringLiteral("侧边栏点击"));
    });
    const auto *home = qobject_cast<HomePage *>(m_ui->skdWdtFunction->widget(0));
    connect(home, &HomePage::goToFunction, this, &FunctionPage::jumpTo);
}

void FunctionPage::changePage(int index)
{
    const auto function = MediaFunction(index);
    setCurrentFunction(function);
    m_ui->skdWdtFunction->setCurrentIndex(index);
    if (const int event = functionRecord(function).viewEvent)
        OskDataTracker::instance().trackTableEvent(event);
}

void FunctionPage::jumpTo(int index)
{
    changePage(index);
    const QSignalBlocker blocker(m_buttons);
    m_buttons->button(index)->setChecked(true);
}
