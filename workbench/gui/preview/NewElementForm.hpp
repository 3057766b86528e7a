#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/form/FormRow.hpp"
#include "workbench/gui/session/ImportDraft.hpp"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class QFormLayout;
class QLabel;

namespace corvane::workbench::gui {

/// The form of an element that an import would add, to be corrected before it comes in.
class NewElementForm final : public QWidget {
    Q_OBJECT

public:
    NewElementForm(std::shared_ptr<ImportDraft> draft, ProjectSession& session, QWidget* parent);
    ~NewElementForm() override;

    /// Shows the element with that place at the top of the document; nothing for none.
    void showElement(std::optional<std::size_t> position);
    [[nodiscard]] std::optional<std::size_t> position() const { return position_; }

    /// Enters what is being typed.
    void commit();

signals:
    /// The draft knows a new value.
    void corrected();

private:
    void close();
    void build(model::Element& element);
    void addRow(ui::Control& control);
    void take(Field& field);
    void refresh();

    std::shared_ptr<ImportDraft> draft_;
    ProjectSession* session_;
    QLabel* title_;
    QLabel* hint_;
    QWidget* page_ = nullptr; // of the present form
    QFormLayout* layout_ = nullptr;
    std::unique_ptr<core::OpenForm> form_;
    std::vector<FormRow*> rows_;
    std::optional<std::size_t> position_;
};

} // namespace corvane::workbench::gui
