#pragma once

#include "docscripts/documentscriptcall.h"
#include "docscripts/documentscriptmodule.h"
#include "model/itemkind.h"

#include <QString>

class MetaItem;
class ScriptDocument;

/// The property display filter script of a document, module "(plaxscript
/// property display filter %1)": it may define "bool
/// shouldDisplayProperty(world, const string& in)" and the same for body,
/// fixture, joint, image, sampler and object. The properties panel asks it
/// about each row by the row's name in lower camel case without a unit
/// ("name", "linearDamping", "angle", ...; a custom property by
/// "customProperties/" and its name); false hides the row.
class DisplayFilterScript
{
public:
    DisplayFilterScript();

    /// The script's module and functions.
    DocumentScriptModule& module() { return m_module; }
    /// True when the script has a function for the kind.
    bool hasFunction(ItemKind kind) const { return m_module.function(size_t(kind) + 1) != nullptr; }
    /// True when the script has a function for the world.
    bool hasWorldFunction() const { return m_module.function(0) != nullptr; }

    /// Asks the script about many rows in a row (one panel refresh). It does
    /// not wait for a script running elsewhere: isReady() is false then and
    /// every row shows.
    class Pass
    {
    public:
        /// A pass over `document`'s items with `script`'s functions.
        Pass(DisplayFilterScript& script, ScriptDocument& document);
        /// False when the script engine was busy.
        bool isReady() const { return m_call.isReady(); }
        /// False when the script hides property `key` of `item`. Without a
        /// function for the kind, or when the call fails (the first failure
        /// after each load is logged), true.
        bool shouldDisplay(const MetaItem& item, const QString& key);
        /// The same for a property of the world.
        bool shouldDisplayWorld(const QString& key);

    private:
        DisplayFilterScript& m_script;
        DocumentScriptCall m_call;
    };

    /// Forgets that a failure was reported (a new load reports again).
    void resetFailureReport() { m_failureReported = false; }

private:
    void reportFailure(const QString& what, const QString& why);

    DocumentScriptModule m_module;
    bool m_failureReported = false;
};
