#include "ui/dialogs/historydialog.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize dialogSize(760, 520);

QString listStyle()
{
    return QStringLiteral("QListWidget { background-color: %1; color: white; border: 1px solid %1; outline: none; }\n"
                          "QListWidget:focus { border: 1px solid %2; }\n"
                          "QListWidget::item { padding: 4px; }\n"
                          "QListWidget::item:selected { background-color: %3; color: white; }\n")
        .arg(look::pageColor, look::focusColor, look::selectionColor);
}

}  // namespace

HistoryDialog::HistoryDialog(const QStringList &steps, int position, QWidget *parent)
    : FramelessDialog(QStringLiteral("HistoryDialog"), parent), list(new QListWidget(this))
{
    resize(dialogSize);
    QLabel *const title =
        makeLabel(QStringLiteral("label_history"), QStringLiteral("HISTORY"), DataFromDevice::fontSettingsLabel);
    list->setObjectName(QStringLiteral("listWidget_history"));
    list->setAccessibleName(tr("History"));
    list->setStyleSheet(listStyle());
    list->setFont(look::pixelFont(DataFromDevice::fontTableContent));
    const int count = static_cast<int>(steps.size());
    for (int made = count; made >= 0; --made) {
        const QString words = made > 0 ? steps[made - 1] : tr("BEFORE ALL CHANGES");
        auto *item = new QListWidgetItem(made == position ? tr("NOW:  ") + words : words, list);
        QFont font = list->font();
        font.setBold(made == position);
        item->setFont(font);
        if (made > position) item->setForeground(QColor(look::undoneColor));
    }
    list->setCurrentRow(count - position);
    connect(list, &QListWidget::itemActivated, this, &HistoryDialog::on_pushButton_goTo_clicked);

    QPushButton *const goTo = makeButton(QStringLiteral("pushButton_goTo"), QStringLiteral("GO TO"), look::acceptColor);
    connect(goTo, &QPushButton::clicked, this, &HistoryDialog::on_pushButton_goTo_clicked);
    QPushButton *const cancel =
        makeButton(QStringLiteral("pushButton_cancel"), QStringLiteral("CANCEL"), look::rejectColor);
    connect(cancel, &QPushButton::clicked, this, &HistoryDialog::on_pushButton_cancel_clicked);

    QVBoxLayout *const layout = makeRows();
    layout->addWidget(title);
    layout->addWidget(list);
    layout->addLayout(makeAnswerRow({goTo, cancel}));
}

int HistoryDialog::chosen() const { return list->count() - 1 - list->currentRow(); }

void HistoryDialog::on_pushButton_goTo_clicked() { accept(); }

void HistoryDialog::on_pushButton_cancel_clicked() { reject(); }
