#pragma once
// frmStart: how the session begins: a blank sheet, a sheet from a template,
// or an existing file, with the recent files or templates beside the options.
#include <QDialog>
#include <string>

#include "shell/StartChoices.h"

class QButtonGroup;
class QCheckBox;
class QLabel;
class QListWidget;

namespace synthara::ui {

class StartDialog final : public QDialog {
    Q_OBJECT
  public:
    StartDialog(const shell::StoredSettings& settings, const sheet::RecentFiles& recent,
                QWidget* parent = nullptr);

    shell::StartOption Option() const;
    void SetOption(shell::StartOption option);
    // The path chosen in the list; "" for "More files ..." or none.
    std::string ChosenPath() const;
    // chkShow: whether the dialog opens at the next start.
    bool ShowNextTime() const;

    QListWidget& List() { return *list_; }
    QButtonGroup& Options() { return *options_; }

  private:
    void FillList();

    const sheet::RecentFiles& recent_;
    QButtonGroup* options_;
    QListWidget* list_;
    QLabel* listHeading_;
    QCheckBox* show_;
};

}  // namespace synthara::ui
