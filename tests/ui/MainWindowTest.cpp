#include <gtest/gtest.h>

#include <QDir>
#include <QTableView>

#include "app/MainWindow.h"
#include "ports/Prompter.h"
#include "sheet/SheetWidget.h"
#include "shell/Document.h"

namespace synthara::ui {
namespace {

TEST(MainWindowTest, ShowsTheExampleAndSavesAScreenshot) {
    ports::SilentPrompter prompter;
    shell::Document document(prompter);
    ASSERT_TRUE(document
                    .Open(SYNTHARA_EXAMPLES "/bcg-vaccine-trials.csv",
                          shell::OpenSettings::ForFormat("Events and sample size in each group"))
                    .ok());
    MainWindow window(document);
    window.show();
    auto* view = window.findChild<QTableView*>();
    ASSERT_NE(view, nullptr);
    EXPECT_GE(view->model()->rowCount(), document.DataRows());
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    EXPECT_TRUE(window.grab().save(SYNTHARA_SCREENSHOTS "/main-window.png"));
}

}  // namespace
}  // namespace synthara::ui
