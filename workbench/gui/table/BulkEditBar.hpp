#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/fields/Field.hpp"
#include "workbench/gui/table/TableModel.hpp"

#include <QWidget>

#include <memory>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace corvane::workbench::gui {

/// Gives the same field of several elements one value: which field, which value, of how many rows.
class BulkEditBar : public QWidget {
    Q_OBJECT

public:
    BulkEditBar(ProjectSession& session, QWidget* parent);

    /// Offers to change these elements, which all have the fields of the first; hides when there
    /// are none.
    void setElements(std::vector<model::Element*> elements);
    /// Puts the keyboard into the bar.
    void begin();

signals:
    void closed();
    /// The user wants to change the field with this key.
    void fieldChosen(const std::string& key);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void offerFields();
    void showField(int index);
    void apply();
    void drop();

    ProjectSession* session_;
    QLabel* count_;
    QComboBox* which_;
    QHBoxLayout* place_;
    QPushButton* apply_;
    std::vector<model::Element*> elements_;
    std::unique_ptr<core::OpenForm> form_; // of the first element
    Field* field_ = nullptr;
};

} // namespace corvane::workbench::gui
