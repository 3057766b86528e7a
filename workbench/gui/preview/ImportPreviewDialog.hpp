#pragma once

#include "workbench/gui/preview/ChangesModel.hpp"
#include "workbench/gui/preview/NewElementForm.hpp"

#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <memory>

class QCheckBox;
class QFrame;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QSplitter;
class QStackedWidget;
class QTreeView;
class QVBoxLayout;

namespace corvane::workbench::gui {

class FilterLine;

/// Shows what an import would change, before anything is touched: what would mislead and what else
/// there is to be warned of, the changes with their counts, and the forms of new elements. The user
/// chooses how elements are matched and whether what is missing is removed, corrects what is new,
/// and imports or thinks better of it, which the draft is told.
class ImportPreviewDialog final : public QDialog {
    Q_OBJECT

public:
    /// The draft was `compared`. The dialog goes when it is closed, and must go before the session.
    ImportPreviewDialog(std::shared_ptr<ImportDraft> draft, ProjectSession& session,
                        QWidget* parent);

    /// Imports what is shown. What was entered since is compared and shown first.
    void accept() override;
    /// Leaves everything as it was, once nothing runs any more.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildMisleading();
    QWidget* buildOptions();
    QSplitter* buildChanges();
    QStackedWidget* buildStatus();
    void buildButtons(QVBoxLayout& layout);
    void connectParts();

    void showPreview();
    void showWarnings();
    void showChanges();
    void showNewElement();
    [[nodiscard]] QString summary() const;
    /// The new element that the user should look at first.
    [[nodiscard]] QModelIndex firstOfInterest() const;
    void takeOptions();
    void compare();
    void showFailure(const QString& reason);
    void setBusy(bool busy);
    void leave();

    std::shared_ptr<ImportDraft> draft_;
    ProjectSession* session_;
    QWidget* content_;
    QLabel* summary_;
    QLabel* misleadingText_ = nullptr;
    QFrame* misleading_;
    QPlainTextEdit* warnings_;
    QRadioButton* byIdentity_;
    QRadioButton* byPath_;
    QCheckBox* removeMissing_;
    FilterLine* filter_;
    ChangesModel* model_;
    QTreeView* view_;
    NewElementForm* form_;
    QLabel* status_;
    QProgressBar* progress_;
    QStackedWidget* state_; // what is said of the preview, or how far the next one is
    QPushButton* import_ = nullptr;
    QTimer filterLater_;
    QTimer compareLater_;
    QTimer percentLater_;
    QPointer<QWidget> focusBeforeBusy_;
    bool closeWanted_ = false;
};

} // namespace corvane::workbench::gui
