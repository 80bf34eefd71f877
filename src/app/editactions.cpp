#include "app/editactions.h"

#include "app/actionicons.h"
#include "app/editorworkspace.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "model/metaworld.h"
#include "script/clipboardedits.h"
#include "script/creationedits.h"
#include "script/scriptapisupport.h"
#include "script/scriptdocument.h"
#include "script/samplerpaths.h"
#include "script/scriptfixture.h"
#include "script/scriptpath.h"
#include "script/scripttransform.h"
#include "script/scriptworld.h"
#include "script/selectionchange.h"
#include "script/selectionedits.h"
#include "views/editorview.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QImageReader>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QToolBar>

namespace
{
struct ModeText
{
    EditMode mode;
    const char* text;
    const char* tip;
};

const ModeText kModeTexts[kEditModeCount] = {
    {EditMode::Bodies, QT_TRANSLATE_NOOP("EditActions", "&Bodies"),
     QT_TRANSLATE_NOOP("EditActions", "Edit bodies: select, move, rotate and scale whole bodies")},
    {EditMode::Fixtures, QT_TRANSLATE_NOOP("EditActions", "&Fixtures"),
     QT_TRANSLATE_NOOP("EditActions", "Edit fixtures: the shapes of the bodies")},
    {EditMode::Vertices, QT_TRANSLATE_NOOP("EditActions", "&Vertices"),
     QT_TRANSLATE_NOOP("EditActions", "Edit the vertices of the selected fixtures; double click an edge to insert one")},
    {EditMode::Joints, QT_TRANSLATE_NOOP("EditActions", "&Joints"),
     QT_TRANSLATE_NOOP("EditActions", "Edit joints and their anchors")},
    {EditMode::Images, QT_TRANSLATE_NOOP("EditActions", "&Images"), QT_TRANSLATE_NOOP("EditActions", "Edit images")},
    {EditMode::Samplers, QT_TRANSLATE_NOOP("EditActions", "Sam&plers"),
     QT_TRANSLATE_NOOP("EditActions", "Edit samplers, which trace outlines from images")},
    {EditMode::Objects, QT_TRANSLATE_NOOP("EditActions", "&Objects"),
     QT_TRANSLATE_NOOP("EditActions", "Edit object instances (other scene files placed in this one)")},
};

struct JointText
{
    int type;
    const char* text;
};

const JointText kJointTexts[] = {
    {JOINT_REVOLUTE, QT_TRANSLATE_NOOP("EditActions", "&Revolute")},
    {JOINT_PRISMATIC, QT_TRANSLATE_NOOP("EditActions", "&Prismatic")},
    {JOINT_DISTANCE, QT_TRANSLATE_NOOP("EditActions", "&Distance")},
    {JOINT_WHEEL, QT_TRANSLATE_NOOP("EditActions", "&Wheel")},
    {JOINT_WELD, QT_TRANSLATE_NOOP("EditActions", "W&eld")},
    {JOINT_FRICTION, QT_TRANSLATE_NOOP("EditActions", "&Friction")},
    {JOINT_ROPE, QT_TRANSLATE_NOOP("EditActions", "R&ope")},
    {JOINT_MOTOR, QT_TRANSLATE_NOOP("EditActions", "&Motor")},
};

QString imageFilter()
{
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns.append(QStringLiteral("*.%1").arg(QString::fromLatin1(format)));
    return QObject::tr("Images (%1);;All files (*.*)").arg(patterns.join(QLatin1Char(' ')));
}
} // namespace

EditActions::EditActions(QWidget* window, EditorWorkspace* workspace)
    : QObject(window), m_window(window), m_workspace(workspace), m_modeGroup(new QActionGroup(this))
{
    for (const ModeText& m : kModeTexts) {
        const EditMode mode = m.mode;
        QString word = editModeWord(mode);
        word[0] = word[0].toUpper();
        QAction* action = make(qPrintable(QStringLiteral("action%1Mode").arg(word)), tr(m.text),
                               QKeySequence(QChar::fromLatin1(editModeKey(mode))), tr(m.tip));
        action->setCheckable(true);
        action->setIcon(ActionIcons::own(QStringLiteral("mode-") + editModeWord(mode)));
        m_modeGroup->addAction(action);
        connect(action, &QAction::triggered, this, [this, mode] {
            if (EditorView* v = view())
                v->setEditMode(mode);
            update();
        });
        m_modes[size_t(mode)] = action;
    }
    m_modes[0]->setChecked(true);

    m_copy = make("actionCopy", tr("&Copy"), QKeySequence::Copy, tr("Copy the selection of the edit mode"));
    connect(m_copy, &QAction::triggered, this, &EditActions::copy);
    m_paste = make("actionPaste", tr("&Paste"), QKeySequence::Paste,
                   tr("Paste bodies, fixtures (onto the selected bodies), images, samplers or objects"));
    connect(m_paste, &QAction::triggered, this, &EditActions::paste);
    m_duplicate = make("actionDuplicate", tr("D&uplicate"), QKeySequence(Qt::CTRL | Qt::Key_D),
                       tr("Duplicate the selection in place and move the copies"));
    connect(m_duplicate, &QAction::triggered, this, &EditActions::duplicate);
    m_delete = make("actionDelete", tr("&Delete"), QKeySequence::Delete, tr("Delete the selection of the edit mode"));
    connect(m_delete, &QAction::triggered, this, &EditActions::deleteSelection);
    m_rename = make("actionRename", tr("Re&name..."), QKeySequence(Qt::CTRL | Qt::Key_R), tr("Rename the selected item"));
    connect(m_rename, &QAction::triggered, this, &EditActions::rename);
    m_selectAll = make("actionSelectAll", tr("Select &all"), QKeySequence::SelectAll,
                       tr("Select every item of the edit mode"));
    connect(m_selectAll, &QAction::triggered, this, &EditActions::selectAll);
    m_reverse = make("actionReverseWinding", tr("Re&verse winding"), QKeySequence(),
                     tr("Reverse the order of the vertices of the selected fixtures"));
    connect(m_reverse, &QAction::triggered, this, &EditActions::reverseWinding);

    // Move, rotate and scale are keys of the editor view (G, R, S); the
    // menu shows them without taking the keys from other widgets.
    const auto transform = [this](const char* name, const QString& text, const QString& key, TransformApi::Operation op) {
        QAction* action = make(name, text + QLatin1Char('\t') + key, QKeySequence(), QString());
        connect(action, &QAction::triggered, this, [this, op] {
            if (EditorView* v = view()) {
                v->setFocus();
                v->startTransform(op, v->mapFromGlobal(QCursor::pos()), false);
            }
        });
        return action;
    };
    m_move = transform("actionMove", tr("&Move"), QStringLiteral("G"), TransformApi::Operation::Translate);
    m_rotate = transform("actionRotate", tr("&Rotate"), QStringLiteral("R"), TransformApi::Operation::Rotate);
    m_scale = transform("actionScale", tr("&Scale"), QStringLiteral("S"), TransformApi::Operation::Scale);

    m_addBody = make("actionAddBody", tr("Add &body"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_B),
                     tr("Add a dynamic body with a box fixture at the cursor"));
    connect(m_addBody, &QAction::triggered, this, [this] {
        EditorView* v = view();
        if (!v)
            return;
        const Vec2 at = m_contextPointSet ? m_contextPoint : v->document().editorState().cursor;
        if (CreationEdits::addBody(v->document(), at, 2, true))
            v->setEditMode(EditMode::Bodies);
        update();
    });
    m_addImage = make("actionAddImage", tr("Add &image..."), QKeySequence(), tr("Add image files at the cursor"));
    connect(m_addImage, &QAction::triggered, this, &EditActions::addImage);
    m_addObject = make("actionAddObject", tr("Add &object..."), QKeySequence(),
                       tr("Place another scene file in this one at the cursor"));
    connect(m_addObject, &QAction::triggered, this, &EditActions::addObject);

    m_trace = make("actionTraceSampler", tr("&Trace outline into paths"), QKeySequence(),
                   tr("Replace the paths of the selected samplers with the outlines their pictures give"));
    connect(m_trace, &QAction::triggered, this, &EditActions::traceSamplers);
    m_pathFixtures = make("actionFixturesFromPaths", tr("Make fi&xtures from paths"), QKeySequence(),
                          tr("Add a fixture for every path of the selected samplers, on the sampler's body "
                             "(or the selected body)"));
    connect(m_pathFixtures, &QAction::triggered, this, &EditActions::fixturesFromPaths);

    m_fixtureMenu = new QMenu(tr("Add &fixture"), window);
    m_fixtureMenu->setObjectName(QStringLiteral("AddFixtureMenu"));
    const std::pair<int, QString> shapes[] = {{SHAPE_CIRCLE, tr("&Circle")},
                                              {-1, tr("&Box")},
                                              {SHAPE_POLYGON, tr("&Polygon (click the points)")},
                                              {SHAPE_LINE, tr("&Line (click the points)")},
                                              {SHAPE_LOOP, tr("L&oop (click the points)")}};
    for (const auto& [type, text] : shapes) {
        QAction* action = m_fixtureMenu->addAction(text);
        action->setObjectName(QStringLiteral("actionAddFixture%1").arg(type < 0 ? QStringLiteral("box")
                                                                               : MetaShape::typeWord(type)));
        const int shape = type;
        connect(action, &QAction::triggered, this, [this, shape] { addFixture(shape); });
    }
    m_jointMenu = new QMenu(tr("Add &joint"), window);
    m_jointMenu->setObjectName(QStringLiteral("AddJointMenu"));
    m_jointMenu->setToolTip(tr("Join the two selected bodies"));
    for (const JointText& j : kJointTexts) {
        QAction* action = m_jointMenu->addAction(tr(j.text));
        action->setObjectName(QStringLiteral("actionAddJoint%1").arg(MetaJoint::typeWord(JointType(j.type))));
        const int type = j.type;
        connect(action, &QAction::triggered, this, [this, type] { addJoint(type); });
    }
}

QAction* EditActions::make(const char* name, const QString& text, const QKeySequence& key, const QString& tip)
{
    auto* action = new QAction(text, m_window);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(key);
    action->setToolTip(tip.isEmpty() ? QString(text).remove(QLatin1Char('&')) : tip);
    action->setStatusTip(action->toolTip());
    m_window->addAction(action);
    return action;
}

void EditActions::populate(QMenu* edit, QMenu* tools, QToolBar* modes)
{
    edit->addSeparator();
    for (QAction* a : {m_copy, m_paste, m_duplicate, m_delete, m_rename})
        edit->addAction(a);
    edit->addSeparator();
    edit->addAction(m_selectAll);

    QMenu* modeMenu = tools->addMenu(tr("Edit &mode"));
    modeMenu->setObjectName(QStringLiteral("EditModeMenu"));
    for (QAction* a : m_modes) {
        modeMenu->addAction(a);
        modes->addAction(a);
    }
    tools->addSeparator();
    tools->addAction(m_addBody);
    tools->addMenu(m_fixtureMenu);
    tools->addMenu(m_jointMenu);
    tools->addAction(m_addImage);
    tools->addAction(m_addObject);
    tools->addSeparator();
    for (QAction* a : {m_move, m_rotate, m_scale, m_reverse})
        tools->addAction(a);
    tools->addSeparator();
    tools->addAction(m_trace);
    tools->addAction(m_pathFixtures);
}

void EditActions::fillContextMenu(QMenu* menu, Vec2 world)
{
    m_contextPoint = world;
    m_contextPointSet = true;
    connect(menu, &QMenu::aboutToHide, this, [this] {
        // Triggered actions run after the menu hides: forget the point later.
        QMetaObject::invokeMethod(this, [this] { m_contextPointSet = false; }, Qt::QueuedConnection);
    });
    update();
    for (QAction* a : {m_copy, m_paste, m_duplicate, m_delete, m_rename})
        menu->addAction(a);
    menu->addSeparator();
    for (QAction* a : {m_move, m_rotate, m_scale})
        menu->addAction(a);
    if (m_reverse->isEnabled())
        menu->addAction(m_reverse);
    if (m_trace->isEnabled()) {
        menu->addAction(m_trace);
        menu->addAction(m_pathFixtures);
    }
    menu->addSeparator();
    QMenu* add = menu->addMenu(tr("&Add here"));
    add->addAction(m_addBody);
    add->addMenu(m_fixtureMenu);
    add->addMenu(m_jointMenu);
    add->addAction(m_addImage);
    add->addAction(m_addObject);
    QAction* cursor = menu->addAction(tr("Set &cursor here"));
    cursor->setObjectName(QStringLiteral("actionSetCursorHere"));
    connect(cursor, &QAction::triggered, this, [this, world] {
        if (EditorView* v = view()) {
            ScriptDocumentScope scope(&v->document());
            UndoMacroScope macro(v->document().undoStack(), tr("set cursor"));
            WorldApi::setCursor(world.x, world.y);
            v->update();
        }
    });
}

EditorView* EditActions::view() const
{
    return qobject_cast<EditorView*>(m_workspace->activeView());
}

void EditActions::update()
{
    EditorView* v = view();
    const bool any = v != nullptr;
    for (QAction* a : m_modes)
        a->setEnabled(any);
    if (!v) {
        for (QAction* a : {m_copy, m_paste, m_duplicate, m_delete, m_rename, m_selectAll, m_reverse, m_move, m_rotate,
                           m_scale, m_addBody, m_addImage, m_addObject, m_trace, m_pathFixtures})
            a->setEnabled(false);
        m_fixtureMenu->setEnabled(false);
        m_jointMenu->setEnabled(false);
        return;
    }
    const EditMode mode = v->editMode();
    m_modes[size_t(mode)]->setChecked(true);
    const Selection& selection = v->document().selection();
    const size_t selected = mode == EditMode::Vertices ? selection.vertices().size()
                                                       : selection.count(editModeItemKind(mode));
    const bool copies = mode != EditMode::Vertices && mode != EditMode::Joints;
    m_copy->setEnabled(copies && selected > 0);
    m_paste->setEnabled(true);
    m_duplicate->setEnabled(mode != EditMode::Vertices && selected > 0);
    m_delete->setEnabled(selected > 0);
    m_rename->setEnabled(mode != EditMode::Vertices && selected == 1);
    m_selectAll->setEnabled(true);
    m_reverse->setEnabled(selection.count(ItemKind::Fixture) > 0);
    m_trace->setEnabled(selection.count(ItemKind::Sampler) > 0);
    m_pathFixtures->setEnabled(selection.count(ItemKind::Sampler) > 0);
    for (QAction* a : {m_move, m_rotate, m_scale})
        a->setEnabled(selected > 0);
    m_addBody->setEnabled(true);
    m_addImage->setEnabled(true);
    m_addObject->setEnabled(true);
    m_fixtureMenu->setEnabled(true);
    m_jointMenu->setEnabled(selection.count(ItemKind::Body) == 2);
}

void EditActions::copy()
{
    EditorView* v = view();
    if (!v)
        return;
    const QString text = ClipboardEdits::copy(v->document(), int(v->editMode()));
    if (text.isEmpty()) {
        emit statusMessage(tr("Nothing to copy in this edit mode"), 4000);
        return;
    }
    QApplication::clipboard()->setText(text);
    emit statusMessage(tr("Copied"), 2000);
}

void EditActions::paste()
{
    EditorView* v = view();
    if (!v)
        return;
    if (v->stateName() != QLatin1String("editor_idle"))
        return;
    const QString text = QApplication::clipboard()->text();
    const ClipboardEdits::Content content = ClipboardEdits::clipboardKind(text);
    if (content.kind == 0) {
        emit statusMessage(tr("The clipboard holds no scene items to paste"), 5000);
        return;
    }
    const int added = ClipboardEdits::paste(v->document(), text);
    if (added == 0) {
        emit statusMessage(content.kind == 2 ? tr("Select the bodies to paste the fixtures onto")
                                             : tr("Nothing was pasted"),
                           5000);
        return;
    }
    static const EditMode modes[] = {EditMode::Bodies, EditMode::Bodies, EditMode::Fixtures, EditMode::Images,
                                     EditMode::Samplers, EditMode::Objects};
    v->setEditMode(modes[content.kind]);
    update();
}

void EditActions::duplicate()
{
    EditorView* v = view();
    if (!v || v->stateName() != QLatin1String("editor_idle"))
        return;
    if (ClipboardEdits::duplicate(v->document(), int(v->editMode())) == 0)
        return;
    // The copies start moving with the mouse, as if G had been pressed.
    v->setFocus();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_G, Qt::NoModifier, QStringLiteral("g"));
    QApplication::sendEvent(v, &key);
    update();
}

void EditActions::deleteSelection()
{
    EditorView* v = view();
    if (!v)
        return;
    if (v->editMode() == EditMode::Vertices)
        SelectionEdits::deleteSelectedVertices(v->document());
    else
        SelectionEdits::deleteSelected(v->document(), editModeItemKind(v->editMode()));
    update();
}

void EditActions::rename()
{
    EditorView* v = view();
    if (!v || v->editMode() == EditMode::Vertices)
        return;
    const ItemKind kind = editModeItemKind(v->editMode());
    const std::vector<ItemId>& ids = v->document().selection().items(kind);
    if (ids.size() != 1)
        return;
    const MetaItem* item = v->document().world().findItem(kind, ids.front());
    if (!item)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(m_window, tr("Rename %1").arg(itemKindWord(kind)), tr("New name:"),
                                               QLineEdit::Normal, item->name(), &ok);
    if (!ok || name == item->name())
        return;
    if (!isValidItemName(name)) {
        emit statusMessage(tr("Names cannot hold \", ', \\, < or >"), 5000);
        return;
    }
    SelectionEdits::rename(v->document(), kind, ids.front(), name);
}

void EditActions::selectAll()
{
    EditorView* v = view();
    if (!v)
        return;
    const EditMode mode = v->editMode();
    std::vector<std::pair<ItemId, int>> refs;
    const MetaWorld& world = v->document().world();
    if (mode == EditMode::Vertices) {
        for (ItemId id : v->document().selection().items(ItemKind::Fixture)) {
            if (const MetaFixture* f = world.findFixture(id))
                for (size_t i = 0; i < f->vertices().size(); ++i)
                    refs.emplace_back(id, int(i));
        }
    } else {
        const auto addAll = [&refs](const auto& items) {
            for (const auto& item : items)
                refs.emplace_back(item->id(), -1);
        };
        switch (mode) {
        case EditMode::Bodies: addAll(world.bodies()); break;
        case EditMode::Fixtures:
            for (const auto& body : world.bodies())
                addAll(body->fixtures());
            break;
        case EditMode::Joints: addAll(world.joints()); break;
        case EditMode::Images: addAll(world.images()); break;
        case EditMode::Samplers: addAll(world.samplers()); break;
        case EditMode::Objects: addAll(world.objects()); break;
        case EditMode::Vertices: break;
        }
    }
    changeSelection(v->document(), mode, refs, SelectionChangeMode::Replace);
    update();
}

void EditActions::reverseWinding()
{
    EditorView* v = view();
    if (!v)
        return;
    EditorDocument& doc = v->document();
    const std::vector<ItemId> ids = doc.selection().items(ItemKind::Fixture);
    if (ids.empty())
        return;
    ScriptDocumentScope scope(&doc);
    UndoMacroScope macro(doc.undoStack(), tr("reverse winding of %1 %2")
                                              .arg(ids.size())
                                              .arg(SelectionEdits::kindWord(ItemKind::Fixture, qsizetype(ids.size()))));
    for (ItemId id : ids) {
        ScriptFixture handle = ScriptApi::fixtureHandle(doc.world().findFixture(id));
        FixtureApi::reverseWinding(&handle);
    }
}

void EditActions::traceSamplers()
{
    EditorView* v = view();
    if (!v)
        return;
    const std::vector<ItemId> ids = v->document().selection().items(ItemKind::Sampler);
    int traced = 0;
    for (ItemId id : ids) {
        const MetaSampler* sampler = v->document().world().findSampler(id);
        // A path keeps the simplification it had; new ones get sensible limits.
        const int maxPoints = sampler && !sampler->paths.empty() && sampler->paths.front().maxPoints > 0
                                  ? sampler->paths.front().maxPoints
                                  : 64;
        const int minAngle = sampler && !sampler->paths.empty() ? sampler->paths.front().minAngle : 5;
        traced += SamplerPaths::traceIntoPaths(v->document(), id, maxPoints, minAngle) ? 1 : 0;
    }
    emit statusMessage(traced ? tr("Traced the outlines of %1 samplers into paths").arg(traced)
                              : tr("No outline was found: is the picture readable?"),
                       5000);
    update();
}

void EditActions::fixturesFromPaths()
{
    EditorView* v = view();
    if (!v)
        return;
    EditorDocument& doc = v->document();
    const std::vector<ItemId> ids = doc.selection().items(ItemKind::Sampler);
    const std::vector<ItemId>& bodies = doc.selection().items(ItemKind::Body);
    int made = 0;
    {
        ScriptDocumentScope scope(&doc);
        UndoMacroScope macro(doc.undoStack(), tr("fixtures from paths"));
        for (ItemId id : ids) {
            const MetaSampler* sampler = doc.world().findSampler(id);
            if (!sampler)
                continue;
            const MetaBody* body = sampler->body ? sampler->body
                                   : bodies.size() == 1 ? doc.world().findBody(bodies.front())
                                                        : nullptr;
            if (!body) {
                emit statusMessage(tr("Sampler '%1' has no body: select the body to put its fixtures on")
                                       .arg(sampler->name()),
                                   6000);
                continue;
            }
            for (size_t p = 0; p < sampler->paths.size(); ++p) {
                const ScriptFixture fixture = TransformApi::createFixtureFromPath(
                    ScriptApi::bodyHandle(body), PathApi::getPath(int(id), int(p)));
                made += fixture.valid ? 1 : 0;
            }
        }
    }
    if (made > 0)
        emit statusMessage(tr("Made %1 fixtures from paths").arg(made), 5000);
    v->sceneChanged();
    update();
}

void EditActions::addFixture(int shapeType)
{
    EditorView* v = view();
    if (!v)
        return;
    if (shapeType >= SHAPE_POLYGON) {
        v->setFocus();
        v->startDrawing(shapeType);
        return;
    }
    EditorDocument& doc = v->document();
    const Vec2 at = m_contextPointSet ? m_contextPoint : doc.editorState().cursor;
    const std::vector<ItemId>& bodies = doc.selection().items(ItemKind::Body);
    const ItemId body = bodies.size() == 1 ? bodies.front() : 0;
    bool made = false;
    if (shapeType == SHAPE_CIRCLE) {
        made = CreationEdits::addFixture(doc, body, SHAPE_CIRCLE, {at}, 0.5f) != nullptr;
    } else {
        made = CreationEdits::addFixture(doc, body, SHAPE_POLYGON,
                                         {{at.x - 0.5f, at.y - 0.5f}, {at.x + 0.5f, at.y - 0.5f},
                                          {at.x + 0.5f, at.y + 0.5f}, {at.x - 0.5f, at.y + 0.5f}},
                                         0) != nullptr;
    }
    if (made)
        v->setEditMode(EditMode::Fixtures);
    update();
}

void EditActions::addJoint(int jointType)
{
    EditorView* v = view();
    if (!v)
        return;
    EditorDocument& doc = v->document();
    const std::vector<ItemId>& bodies = doc.selection().items(ItemKind::Body);
    if (bodies.size() != 2) {
        emit statusMessage(tr("Select the two bodies to join first"), 5000);
        return;
    }
    const Vec2 at = m_contextPointSet ? m_contextPoint : doc.editorState().cursor;
    if (CreationEdits::addJoint(doc, jointType, bodies[0], bodies[1], at))
        v->setEditMode(EditMode::Joints);
    update();
}

void EditActions::addImage()
{
    EditorView* v = view();
    if (!v)
        return;
    const Vec2 at = m_contextPointSet ? m_contextPoint : v->document().editorState().cursor;
    const QStringList files = QFileDialog::getOpenFileNames(m_window, tr("Add image"), QString(), imageFilter());
    if (files.isEmpty())
        return;
    if (v->addImageFiles(files, at, false) > 0)
        v->setEditMode(EditMode::Images);
    update();
}

void EditActions::addObject()
{
    EditorView* v = view();
    if (!v)
        return;
    const Vec2 at = m_contextPointSet ? m_contextPoint : v->document().editorState().cursor;
    const QString file =
        QFileDialog::getOpenFileName(m_window, tr("Add object"), QString(), tr("P.L.A.X files (*.plax)"));
    if (file.isEmpty())
        return;
    EditorDocument& doc = v->document();
    MetaObject* object = CreationEdits::addObject(doc, file, at);
    if (!object)
        return;
    v->sceneChanged();
    v->setEditMode(EditMode::Objects);
    update();
}
