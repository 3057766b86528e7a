#include "workbench/gui/window/StartPage.hpp"

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Settings.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::StartPage";
constexpr int kPictureSize = 64;
constexpr qsizetype kShownProjects = 5;

QLabel* faintLabel(const QString& text, QWidget* parent) {
    auto* const label = plainLabel(parent, text);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

StartPage::StartPage(const Actions& actions, const QString& addText, QMenu& addMenu,
                     QWidget* parent)
    : QWidget(parent), recent_(new QVBoxLayout) {
    setObjectName(QStringLiteral("startPage"));
    auto* const picture = new QLabel(this);
    picture->setPixmap(icon("application").pixmap(kPictureSize));
    auto* const title = plainLabel(this, translated(kContext, "corvane workbench"));
    title->setObjectName(QStringLiteral("startTitle"));
    auto* const hint = faintLabel(
        translated(kContext, "Add an element, open a project, or drop a file here."), this);

    auto* const add = new QPushButton(icon("add"), addText, this);
    add->setObjectName(QStringLiteral("startAdd"));
    add->setMenu(&addMenu);
    auto& openAction = actions[Command::openProject];
    auto* const open =
        new QPushButton(openAction.icon(), translated(kContext, "Open Project…"), this);
    connect(open, &QPushButton::clicked, &openAction, &QAction::trigger);
    auto& importAction = actions[Command::importFile];
    auto* const import = new QPushButton(importAction.icon(), importAction.text(), this);
    import->setObjectName(QStringLiteral("startImport"));
    connect(import, &QPushButton::clicked, &importAction, &QAction::trigger);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    for (auto* const button : {add, import, open})
        buttons->addWidget(button);
    buttons->addStretch(1);

    auto* const column = new QVBoxLayout;
    column->setSpacing(10);
    column->addWidget(picture);
    column->addWidget(title);
    column->addWidget(hint);
    column->addSpacing(12);
    column->addLayout(buttons);
    column->addSpacing(18);
    recent_->setSpacing(4);
    column->addLayout(recent_);
    auto* const layout = new QGridLayout(this);
    layout->addLayout(column, 1, 1);
    layout->setRowStretch(0, 1);
    layout->setRowStretch(2, 2);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(2, 1);
    refresh();
}

void StartPage::refresh() {
    while (auto* const item = recent_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const auto projects = settings::recentProjects();
    if (!projects.isEmpty())
        recent_->addWidget(faintLabel(translated(kContext, "Recent projects"), this));
    for (const auto& file : projects.mid(0, kShownProjects)) {
        auto* const link = new QPushButton(withoutMnemonic(nameAndFolder(file)), this);
        link->setFlat(true);
        link->setToolTip(withoutFormat(file));
        link->setAccessibleDescription(file);
        recent_->addWidget(link);
        connect(link, &QPushButton::clicked, this, [this, file] { emit projectChosen(file); });
    }
}

} // namespace corvane::workbench::gui
