#pragma once

#include "workbench/core/OpenForm.hpp"
#include "workbench/gui/FormRow.hpp"
#include "workbench/gui/Icons.hpp"
#include "workbench/gui/ProjectSession.hpp"

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

    /// Puts the keyboard into the field with this label, or into the first one for an empty label;
    /// false if there is none.
    bool focusField(const QString& label);

signals:
    /// A button that imports files was pressed; `extension` begins with a dot.
    void importWanted(model::Element* element, const QString& label, const QString& extension);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildHeader();
    void closeForm();
    void openForm();
    void addRow(ui::Control& control);
    void take(Field& field);
    void press(ui::Control& control);
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
    std::optional<QString> focusAfterReset_; // label of the field that had the keyboard
};

} // namespace corvane::workbench::gui
