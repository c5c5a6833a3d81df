#include "sheet/SheetDelegate.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPainter>

#include "sheet/SheetModel.h"

namespace synthara::ui {

namespace {

const QColor kGridLine(218, 220, 224);
const QColor kOutline(96, 112, 140);

}  // namespace

void SheetDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    // A merged column writes a run of equal cells once, in its first cell.
    if (index.data(SheetModel::JoinAboveRole).toBool()) option->text.clear();
}

QWidget* SheetDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    const auto* model = qobject_cast<const SheetModel*>(index.model());
    const QStringList values =
        model != nullptr ? model->DropDownValues(index.column()) : QStringList();
    if (values.isEmpty()) return QStyledItemDelegate::createEditor(parent, option, index);
    auto* box = new QComboBox(parent);
    box->setObjectName("dropDownEditor");
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setFrame(false);
    box->addItems(values);
    return box;
}

bool SheetDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(object);
    if (editor != nullptr && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            emit commitData(editor);
            emit closeEditor(editor, QAbstractItemDelegate::NoHint);
            emit EntryFinished();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

void SheetDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const QRect r = option.rect;
    painter->save();
    painter->setPen(kGridLine);
    painter->drawLine(r.topRight(), r.bottomRight());
    if (!index.data(SheetModel::JoinBelowRole).toBool())
        painter->drawLine(r.bottomLeft(), r.bottomRight());
    const int edges = index.data(SheetModel::EdgeRole).toInt();
    if (edges != 0) {
        painter->setPen(QPen(kOutline, 2));
        if ((edges & SheetModel::LeftEdge) != 0)
            painter->drawLine(r.left() + 1, r.top(), r.left() + 1, r.bottom() + 1);
        if ((edges & SheetModel::RightEdge) != 0)
            painter->drawLine(r.right(), r.top(), r.right(), r.bottom() + 1);
    }
    painter->restore();
}

}  // namespace synthara::ui
