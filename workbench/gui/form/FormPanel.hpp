#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/form/FormRow.hpp"
#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/session/ProjectSession.hpp"

#include <QWidget>

#include <atomic>
#include <memory>
#include <vector>

class QFormLayout;
class QLabel;
class QScrollArea;

namespace corvane::workbench::gui {

/// The property form of one element, built from its controls alone.
class FormPanel : public QWidget {
    Q_OBJECT

public:
    FormPanel(ProjectSession& session, ClassIcons& icons, QWidget* parent);
    ~FormPanel() override;

    /// Shows the form of an element of the project; null for none.
    void showElement(model::Element* element);
    [[nodiscard]] model::Element* element() const { return element_; }

    /// Puts the keyboard into the field of the control with this key, or into the first field for
    /// an empty key, with its content selected; false if there is none.
    bool jumpTo(std::string_view key);

signals:
    /// The button with this key, which imports files, was pressed.
    void importWanted(model::Element* element, const QString& key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildHeader();
    FormRow* focusField(std::string_view key);
    void closeForm();
    void openForm();
    void addRow(ui::Control& control);
    void take(Field& field);
    void showHeader();
    void showHelp(const ui::Control* control);
    void refreshSoon();
    void refresh();

    ProjectSession* session_;
    ClassIcons* icons_;
    QLabel* picture_;
    QLabel* title_;
    QLabel* subtitle_;
    QLabel* help_;
    QScrollArea* area_;
    QFormLayout* rowLayout_ = nullptr; // of the present form
    model::Element* element_ = nullptr;
    std::unique_ptr<core::OpenForm> form_;
    std::vector<FormRow*> rows_;
    std::shared_ptr<void> observation_;
    std::atomic<bool> refreshPending_ = false; // changes are told from the thread that makes them
    ProjectSession::Visit visit_ = 0;
    std::optional<std::string> focusAfterReset_; // key of the field that had the keyboard
};

} // namespace corvane::workbench::gui
