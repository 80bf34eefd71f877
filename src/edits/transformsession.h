#pragma once

#include "api/scripttransform.h"
#include "base/types.h"

#include <QString>

#include <memory>

class ItemSnapshot;
class ScriptDocument;

/// An interactive transform of the selection of one edit mode, as the
/// editor view's move, rotate and scale tools make it. While the user drags
/// or types, preview() shows the transform by applying it with recording
/// off. finish() puts every item back exactly as it was and applies the final
/// transform once, recorded, as one undo macro ("translation of 3 bodies",
/// "rotation of 1 image", "scale of 2 fixtures", "negative scale of 1
/// body"), then raises the mode's manipulation hook event. Undo therefore
/// returns to the start bit for bit. A session left unfinished is cancelled.
class TransformSession
{
public:
    /// Starts on the current selection of edit mode `mode`; rotate and scale turn about the selection centre (pivot mode
    /// 1) or the cursor (pivot mode 2).
    TransformSession(ScriptDocument& document, EditMode mode, TransformApi::Operation operation, int pivotMode = 1);
    ~TransformSession();
    TransformSession(const TransformSession&) = delete;
    TransformSession& operator=(const TransformSession&) = delete;

    /// Items (or vertices) being transformed; 0 means there is nothing to do.
    int count() const;
    /// The operation.
    TransformApi::Operation operation() const { return m_operation; }
    /// The point rotate and scale turn about, in world coordinates.
    Vec2 pivot() const { return m_pivot; }
    /// Shows the transform (translate by (a, b), rotate by the angle a, scale by (a, b)).
    void preview(float a, float b = 0);
    /// Records the transform as one undo step; false (nothing recorded) when
    /// it changes nothing or is not usable (non-finite, a zero scale).
    bool finish(float a, float b = 0);
    /// Puts everything back as it was; nothing is recorded.
    void cancel();
    /// The undo macro text for a transform by (a, b).
    QString macroText(float a, float b) const;

private:
    bool usable(float a, float b) const;

    ScriptDocument& m_document;
    EditMode m_mode;
    TransformApi::Operation m_operation;
    int m_pivotMode;
    Vec2 m_pivot;
    std::unique_ptr<ItemSnapshot> m_snapshot;
    bool m_changed = false;
    bool m_done = false;
};
