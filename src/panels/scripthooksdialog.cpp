#include "panels/scripthooksdialog.h"

#include "hooks/scripthooksmanager.h"
#include "panels/scripthooksmodel.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

ScriptHooksDialog::ScriptHooksDialog(ScriptHooksManager& manager, QWidget* parent)
    : QDialog(parent), m_manager(manager), m_model(new ScriptHooksModel(manager.table(), this))
{
    setObjectName(QStringLiteral("ScriptHooksDialog"));
    setWindowTitle(tr("Script hooks"));
    resize(560, 520);

    m_tree = new QTreeView(this);
    m_tree->setObjectName(QStringLiteral("ScriptHooksTree"));
    m_tree->setModel(m_model);
    m_tree->setHeaderHidden(true);
    m_tree->expandAll();

    m_add = new QPushButton(tr("&Add scripts..."), this);
    m_add->setObjectName(QStringLiteral("AddHookScript"));
    m_remove = new QPushButton(tr("&Remove"), this);
    m_remove->setObjectName(QStringLiteral("RemoveHookScript"));
    m_up = new QPushButton(tr("Move &up"), this);
    m_up->setObjectName(QStringLiteral("MoveHookScriptUp"));
    m_down = new QPushButton(tr("Move &down"), this);
    m_down->setObjectName(QStringLiteral("MoveHookScriptDown"));
    connect(m_add, &QPushButton::clicked, this, [this] { addScripts(); });
    connect(m_remove, &QPushButton::clicked, this, &ScriptHooksDialog::removeScript);
    connect(m_up, &QPushButton::clicked, this, [this] { moveScript(-1); });
    connect(m_down, &QPushButton::clicked, this, [this] { moveScript(1); });

    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {m_add, m_remove, m_up, m_down})
        buttons->addWidget(button);
    buttons->addStretch(1);
    auto* body = new QHBoxLayout;
    body->addWidget(m_tree, 1);
    body->addLayout(buttons);

    auto* where = new QLabel(tr("Saved in '%1'").arg(manager.file()), this);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(box, &QDialogButtonBox::accepted, this, &ScriptHooksDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &ScriptHooksDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addWidget(where);
    layout->addWidget(box);

    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { updateButtons(); });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parentIndex) {
        m_tree->expand(parentIndex);
    });
    m_tree->setCurrentIndex(m_model->eventIndex(SHE_KEY_0));
    updateButtons();
}

void ScriptHooksDialog::updateButtons()
{
    const QModelIndex current = m_tree->currentIndex();
    const bool script = current.parent().isValid();
    m_add->setEnabled(m_model->eventOf(current) != SHE_MAX);
    m_remove->setEnabled(script);
    m_up->setEnabled(script && current.row() > 0);
    m_down->setEnabled(script && current.row() + 1 < m_model->rowCount(current.parent()));
}

void ScriptHooksDialog::addScripts(const QStringList& given)
{
    const ScriptHookEvent event = m_model->eventOf(m_tree->currentIndex());
    if (event == SHE_MAX)
        return;
    const QStringList paths =
        given.isEmpty() ? QFileDialog::getOpenFileNames(this, tr("Add hook scripts"), QString(),
                                                        tr("Script files (*.rs);;All files (*.*)"))
                        : given;
    const QModelIndex added = m_model->addScripts(event, paths);
    if (added.isValid())
        m_tree->setCurrentIndex(added);
    updateButtons();
}

void ScriptHooksDialog::removeScript()
{
    const QModelIndex current = m_tree->currentIndex();
    const QModelIndex parentIndex = current.parent();
    if (m_model->removeScript(current))
        m_tree->setCurrentIndex(parentIndex);
    updateButtons();
}

void ScriptHooksDialog::moveScript(int step)
{
    const QModelIndex moved = m_model->moveScript(m_tree->currentIndex(), step);
    if (moved.isValid())
        m_tree->setCurrentIndex(moved);
    updateButtons();
}

void ScriptHooksDialog::accept()
{
    m_manager.setTable(m_model->table());
    if (m_manager.save())
        QDialog::accept();
}
