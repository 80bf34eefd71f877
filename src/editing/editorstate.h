#pragma once

#include "base/types.h"
#include "editing/editmode.h"

#include <QString>

/// The editor state that scripts can read and set: the cursor, the view of
/// the scene, the mouse and the keyboard modifiers, and the edit mode. A
/// document keeps one, so that scripts work the same without a window; the
/// active editor view keeps it up to date and follows its view settings.
class EditorState
{
public:
    /// Cursor position in world coordinates (a scene-level marker for tools).
    Vec2 cursor;
    /// World point at the centre of the view.
    Vec2 viewCenter;
    /// World height shown by the view.
    float viewHeight = 20;
    /// Height of the view in pixels.
    float viewPixelHeight = 600;
    /// Mouse position in world coordinates.
    Vec2 mousePos;
    /// Current edit mode (scripts read it as its word, see editModeWord()).
    EditMode editMode = EditMode::Bodies;
    /// Modifier keys held down.
    bool ctrlDown = false;
    bool altDown = false;
    /// Folder of the current custom action menu layout.
    QString actionMenuFolder = QStringLiteral("default");
};
