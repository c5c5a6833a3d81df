#include "app/AnalysisResultsDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace synthara::ui {

namespace {

// A number with `decimals` places; blank when the analysis has none.
QString Number(const std::optional<double>& value, int decimals) {
    if (!value || !std::isfinite(*value)) return {};
    return QString::number(*value, 'f', decimals);
}

// A p-value to five places, and those too small to show so as less than that.
QString PValue(const std::optional<double>& p) {
    if (p && *p < 0.00001) return "<0.00001";
    return Number(p, 5);
}

}  // namespace

AnalysisResultsDialog::AnalysisResultsDialog(const analysis::AnalysisResult& result,
                                             QWidget* parent)
    : QDialog(parent),
      summaries_(new QTableWidget(static_cast<int>(result.summaries.size()), ColumnCount, this)) {
    setObjectName("frmAnalysisResults");
    setWindowTitle("Analysis");
    const int level = static_cast<int>(std::lround(result.ciLevel * 100));
    auto* heading = new QLabel(QString("Effect measure: %1\nConfidence level: %2%")
                                   .arg(QString::fromStdString(result.index))
                                   .arg(level),
                               this);
    heading->setTextInteractionFlags(Qt::TextSelectableByMouse);

    summaries_->setHorizontalHeaderLabels({"Group", "Model", "k", "Estimate", "Lower limit",
                                           "Upper limit", "Z", "p", "Q", "df", "I\u00b2 (%)",
                                           "Tau\u00b2"});
    summaries_->verticalHeader()->hide();
    summaries_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    summaries_->setSelectionBehavior(QAbstractItemView::SelectRows);
    for (int r = 0; r < summaries_->rowCount(); ++r) {
        const analysis::SummaryResult& s = result.summaries[static_cast<std::size_t>(r)];
        const analysis::Estimate& e = s.estimate;
        const QStringList cells = {QString::fromStdString(s.group),
                                   QString::fromStdString(s.modelWord),
                                   QString::number(s.k),
                                   Number(e.displayPoint, 4),
                                   Number(e.displayLower, 4),
                                   Number(e.displayUpper, 4),
                                   Number(e.z, 3),
                                   PValue(e.p),
                                   Number(s.q, 3),
                                   Number(s.df, 0),
                                   Number(s.i2, 2),
                                   Number(s.tau2, 4)};
        for (int c = 0; c < ColumnCount; ++c) {
            auto* item = new QTableWidgetItem(cells[c]);
            if (c >= K) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            summaries_->setItem(r, c, item);
        }
    }
    summaries_->horizontalHeader()->setMinimumSectionSize(64);
    summaries_->resizeColumnsToContents();
    summaries_->horizontalHeader()->setStretchLastSection(true);
    summaries_->resizeRowsToContents();
    // As tall as its rows, within reason.
    const int rowsHeight = summaries_->verticalHeader()->length() +
                           summaries_->horizontalHeader()->height() + 2 * summaries_->frameWidth();
    summaries_->setFixedHeight(std::min(rowsHeight, 480));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(summaries_);
    if (!result.notes.empty()) {
        QStringList notes;
        for (const std::string& note : result.notes)
            notes << QString::fromStdString(note);
        auto* label = new QLabel(notes.join('\n'), this);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    layout->addStretch(1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    // As wide as its columns.
    const QMargins margins = layout->contentsMargins();
    resize(summaries_->horizontalHeader()->length() + 2 * summaries_->frameWidth() +
               margins.left() + margins.right(),
           sizeHint().height() + 24);
}

}  // namespace synthara::ui
