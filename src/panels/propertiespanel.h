#pragma once

#include "docscripts/displayfilterscript.h"
#include "model/itemkind.h"
#include "panels/propertydefs.h"

#include <QScrollArea>

class EditorDocument;
class QFormLayout;
class QWidget;

/// The properties panel: every property of the selected bodies, fixtures,
/// joints, images, samplers and objects, and the custom properties the scene
/// defines for them. With several items selected, a property whose values
/// differ shows as mixed. An edit changes every selected item of the kind
/// through the script API as one undo step. Shows "No selection" when
/// nothing is selected. Rows the scene's property display filter script
/// hides for any selected item are left out.
class PropertiesPanel : public QScrollArea
{
    Q_OBJECT

public:
    /// An empty panel.
    explicit PropertiesPanel(QWidget* parent = nullptr);

    /// Shows a document's selection (null: nothing).
    void setDocument(EditorDocument* document);
    /// Rebuilds the rows from the document (deferred to the event loop, so an
    /// editor can finish its own signal first).
    void scheduleRefresh();
    /// Rebuilds the rows now.
    void refresh();
    /// Text shown when there is nothing to show.
    static QString noSelectionText();

private:
    void addSection(QFormLayout* form, ItemKind kind, const std::vector<PropertyDef>& rows);
    QWidget* makeEditor(ItemKind kind, const PropertyDef& row, const std::vector<const MetaItem*>& items);
    void apply(ItemKind kind, const PropertyDef& row, const QVariant& value);

    EditorDocument* m_document = nullptr;
    QMetaObject::Connection m_stackConnection;
    QMetaObject::Connection m_scriptsConnection;
    // The display filter's pass while a refresh builds the rows, else null.
    DisplayFilterScript::Pass* m_filter = nullptr;
    bool m_refreshPending = false;
};
