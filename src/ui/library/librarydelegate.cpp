#include "ui/library/librarydelegate.h"

#include "ui/library/librarymodel.h"
#include "ui/look.h"
#include "ui/nameedit.h"

#include <QPainter>

namespace {

constexpr qreal radius = 5;  // pixels, as the editors have
constexpr qreal gap = 1;     // pixels around a cell's ground
constexpr int margin = 7;    // pixels beside the text
constexpr qreal dimmed = 0.3;
constexpr int litLightness = 170;  // percent

}  // namespace

void LibraryDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool isMatch = index.data(LibraryModel::MatchRole).toBool();
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isCurrent = option.state.testFlag(QStyle::State_HasFocus);
    QColor ground = index.data(Qt::BackgroundRole).value<QColor>();
    if (index.data(LibraryModel::LitRole).toBool()) ground = ground.lighter(litLightness);

    painter->save();
    if (index.data(LibraryModel::DimRole).toBool()) painter->setOpacity(dimmed);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(isMatch ? QPen(QColor(look::focusColor), 1) : QPen(Qt::NoPen));
    painter->setBrush(ground);
    const QRectF place = QRectF(option.rect).adjusted(gap + 0.5, gap + 0.5, -gap - 0.5, -gap - 0.5);
    painter->drawRoundedRect(place, radius, radius);
    if (isSelected) {
        QColor veil(look::focusColor);
        veil.setAlphaF(0.35F);
        painter->setPen(Qt::NoPen);
        painter->setBrush(veil);
        painter->drawRoundedRect(place, radius, radius);
    }
    if (isCurrent) {
        painter->setPen(QPen(QColor(look::focusColor), 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(place, radius, radius);
    }
    QFont font = option.font;
    font.setBold(isMatch);
    painter->setFont(font);
    painter->setPen(Qt::white);
    const QRect text = option.rect.adjusted(margin, 0, -margin, 0);
    const QString name = index.data(Qt::DisplayRole).toString();
    const QFontMetrics metrics(font);
    painter->drawText(text, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                      metrics.elidedText(name, Qt::ElideRight, text.width()));
    painter->restore();
}

QWidget *LibraryDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    auto *edit = new NameEdit(parent, index.data(Qt::EditRole).toString());
    edit->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    return edit;
}

void LibraryDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    static_cast<NameEdit *>(editor)->showStored(index.data(Qt::EditRole).toString());
}

void LibraryDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *const edit = static_cast<NameEdit *>(editor);
    if (edit->isAltered()) model->setData(index, edit->text());
}

void LibraryDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                           const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}
