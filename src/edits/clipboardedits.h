#pragma once

#include "editing/editmode.h"

#include <QString>

class ScriptDocument;

// Copy, paste and duplicate of an editor view. The clipboard holds scene-file
// JSON: one compact object with exactly one record array ("metabody" with the
// bodies' fixtures, "metafixture", "metaimage", "metasampler" or
// "metaobject"). Paste and duplicate are one undo macro each and go through
// the script API; the interface only moves the text to and from the system
// clipboard.
namespace ClipboardEdits
{
/// What clipboard text holds: the kind number (1 bodies, 2 fixtures, 3
/// images, 4 samplers, 5 objects; 0 when the text is not usable) and the
/// number of records.
struct Content
{
    int kind = 0;
    int count = 0;
};

/// Reads what a clipboard text holds: the first of the five record arrays
/// present, in the order bodies, fixtures, images, samplers, objects.
Content clipboardKind(const QString& text);

/// The clipboard text for the selected items of an edit mode (bodies,
/// fixtures, images, samplers, objects); empty when nothing is selected or
/// the mode copies nothing (vertices, joints). Logs "Copied %1 %2".
QString copy(ScriptDocument& document, EditMode mode);

/// Adds the items of a clipboard text as new items (fresh ids), selected
/// instead of the old selection, in one undo macro ("paste %1 %2", "paste %1
/// %2 onto %3 %4", "paste %1 %2 into background"). Fixtures need selected
/// bodies and go onto each of them; images and samplers go onto each
/// selected body, or into the background when none is selected. Returns the
/// number of items added; text that is not usable changes nothing and
/// returns 0.
int paste(ScriptDocument& document, const QString& text);

/// Duplicates the selected items of an edit mode in place ("duplicate %1
/// %2"), selecting the copies. Returns the number of copies.
int duplicate(ScriptDocument& document, EditMode mode);
} // namespace ClipboardEdits
