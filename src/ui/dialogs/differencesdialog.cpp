#include "ui/dialogs/differencesdialog.h"

#include "model/datafromdevice.h"
#include "model/places.h"
#include "ui/look.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>

namespace {

constexpr std::size_t fewValues = 20;  // so many can be read at a glance
constexpr QSize dialogSize(900, 600);
constexpr int valueWidth = 190;  // pixels
constexpr auto checkable = Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate;

QString treeStyle()
{
    return QStringLiteral("QTreeWidget { background-color: %1; color: white; border: none; }\n"
                          "QHeaderView::section { background-color: %1; color: white; border: none; padding: 4px; }\n"
                          "QTreeWidget::indicator { width: 15px; height: 15px; }\n"
                          "QTreeWidget::indicator:unchecked { image: url(:/images/checkbox_unchecked.png); }\n"
                          "QTreeWidget::indicator:checked { image: url(:/images/checkbox_checked.png); }\n"
                          "QTreeWidget::indicator:indeterminate { image: url(:/images/checkbox_unchecked.png);"
                          " background-color: gray; }\n")
               .arg(look::pageColor) +
           look::focusRule(QStringLiteral("QTreeWidget:focus"));
}

/// The part that a record belongs to, for people.
QString partName(const Difference &difference)
{
    using Kind = RecordId::Kind;
    if (!difference.writable) return QObject::tr("SET ON THE UNIT, NOT WRITTEN");
    switch (difference.record.kind) {
    case Kind::MidiDevice:
        return QStringLiteral("MIDI DEVICES");
    case Kind::Bank:
    case Kind::Preset:
        return QStringLiteral("BANKS");
    default:
        return QStringLiteral("GLOBAL SETTINGS");
    }
}

/// The bank or device within the part; empty for what is neither.
QString groupName(const RecordId &record)
{
    using Kind = RecordId::Kind;
    if (record.kind == Kind::MidiDevice) return places::midiDevice(record.number);
    if (record.kind == Kind::Bank || record.kind == Kind::Preset) return places::bank(record.number);
    return QString();
}

}  // namespace

DifferencesDialog::DifferencesDialog(std::vector<Difference> all, Purpose purpose, const QString &fileName,
                                     QWidget *parent)
    : FramelessDialog(QStringLiteral("DifferencesDialog"), parent), shown(std::move(all)), tree(new QTreeWidget(this))
{
    resize(dialogSize);
    QLabel *const summary =
        makeLabel(QStringLiteral("label_summary"), summaryOf(shown), DataFromDevice::fontSettingsLabel);
    summary->setWordWrap(true);

    tree->setObjectName(QStringLiteral("treeWidget_differences"));
    tree->setAccessibleName(tr("Differences"));
    tree->setStyleSheet(treeStyle());
    tree->setFont(look::pixelFont(DataFromDevice::fontTableContent));
    tree->setHeaderLabels({tr("VALUE"), tr("UNIT"), fileName});
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (const int column : {1, 2})
        tree->setColumnWidth(column, valueWidth);
    tree->setUniformRowHeights(true);
    fill(purpose);

    QPushButton *const cancel =
        makeButton(QStringLiteral("pushButton_cancel"), QStringLiteral("CANCEL"), look::rejectColor);
    connect(cancel, &QPushButton::clicked, this, &DifferencesDialog::on_pushButton_cancel_clicked);
    QPushButton *restore = nullptr;
    if (purpose == Purpose::Restore) {
        restore = makeButton(QStringLiteral("pushButton_restore"), QStringLiteral("RESTORE"), look::acceptColor);
        connect(restore, &QPushButton::clicked, this, &DifferencesDialog::on_pushButton_restore_clicked);
        auto *const afterAll = new QTimer(this);  // a box may check thousands of others
        afterAll->setSingleShot(true);
        connect(tree, &QTreeWidget::itemChanged, afterAll, qOverload<>(&QTimer::start));
        const auto enable = [this, restore] { restore->setEnabled(!chosen().empty()); };
        connect(afterAll, &QTimer::timeout, restore, enable);
        enable();
    }

    QVBoxLayout *const layout = makeRows();
    layout->addWidget(summary);
    layout->addWidget(tree);
    layout->addLayout(restore ? makeAnswerRow({restore, cancel}) : makeAnswerRow({cancel}));
}

void DifferencesDialog::fill(Purpose purpose)
{
    const bool withBoxes = purpose == Purpose::Restore;
    std::map<QString, QTreeWidgetItem *> parts;
    std::map<std::pair<QString, QString>, QTreeWidgetItem *> groups;
    const auto makeItem = [&](QTreeWidgetItem *parent, const QStringList &texts, bool checked) {
        auto *item = parent ? new QTreeWidgetItem(parent, texts) : new QTreeWidgetItem(tree, texts);
        item->setFlags(checked ? checkable | Qt::ItemIsSelectable : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        if (checked) item->setCheckState(0, Qt::Checked);
        return item;
    };
    for (const Difference &difference : shown) {
        const QString part = partName(difference);
        const QString group = groupName(difference.record);
        const bool checked = withBoxes && difference.writable;
        QTreeWidgetItem *&top = parts[part];
        if (!top) top = makeItem(nullptr, {part}, checked);
        QTreeWidgetItem *parent = top;
        if (!group.isEmpty()) {
            QTreeWidgetItem *&inner = groups[{part, group}];
            if (!inner) inner = makeItem(top, {group}, checked);
            parent = inner;
        }
        items.push_back(makeItem(parent, {difference.place, difference.from, difference.to}, checked));
    }
    if (shown.size() <= fewValues) return tree->expandAll();
    for (const auto &[name, item] : parts)
        item->setExpanded(true);
}

std::vector<Difference> DifferencesDialog::chosen() const
{
    std::vector<Difference> checked;
    for (std::size_t index = 0; index < shown.size(); ++index)
        if (shown[index].writable && items[index]->checkState(0) == Qt::Checked) checked.push_back(shown[index]);
    return checked;
}

void DifferencesDialog::on_pushButton_restore_clicked() { accept(); }

void DifferencesDialog::on_pushButton_cancel_clicked() { reject(); }
