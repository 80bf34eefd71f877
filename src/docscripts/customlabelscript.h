#pragma once

#include "docscripts/documentscriptcall.h"
#include "docscripts/documentscriptmodule.h"
#include "model/itemkind.h"

#include <QColor>
#include <QString>

class MetaItem;
class ScriptDocument;

/// How the custom labels script wants one item's label drawn.
struct CustomLabel
{
    /// The text; empty hides the label.
    QString text;
    /// Background and text colours, valid when the script set them.
    QColor background;
    QColor foreground;
};

/// The custom labels script of a document, module "(plaxscript custom labels
/// %1)": for each item kind it may define "void setLabelColors(body, color
/// &out, color &out)" (background, foreground) and "void setLabelText(body,
/// string &out)", and the same for fixture, joint, image, sampler and object.
class CustomLabelScript
{
public:
    CustomLabelScript();

    /// The script's module and functions.
    DocumentScriptModule& module() { return m_module; }
    /// True when the script defines a label function for the kind.
    bool hasFunctions(ItemKind kind) const;

    /// Asks the script about many labels in a row (one repaint's worth). It
    /// does not wait for a script running elsewhere: isReady() is false then
    /// and the labels keep their defaults this time.
    class Pass
    {
    public:
        /// A pass over `document`'s items with `script`'s functions.
        Pass(CustomLabelScript& script, ScriptDocument& document);
        /// False when the script engine was busy.
        bool isReady() const { return m_call.isReady(); }
        /// Lets the script decide `item`'s label: `label` holds the default
        /// (the item's name, no colours) on entry. setLabelText starts from
        /// the current text and setLabelColors from black on white. A call
        /// that fails keeps the default; the first failure after each load
        /// is logged. Returns true when a function of the kind ran.
        bool apply(const MetaItem& item, CustomLabel* label);

    private:
        CustomLabelScript& m_script;
        DocumentScriptCall m_call;
    };

    /// Forgets that a failure was reported (a new load reports again).
    void resetFailureReport() { m_failureReported = false; }

private:
    void reportFailure(const MetaItem& item, const QString& why);

    DocumentScriptModule m_module;
    bool m_failureReported = false;
};
