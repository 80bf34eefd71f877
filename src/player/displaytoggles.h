#pragma once

class QSettings;

/// What a player view draws. Each view copies these from the application
/// settings when it opens and writes them back when it closes.
struct PlayerDisplayToggles
{
    bool showInfo = true;             ///< "player/showinfo": the information overlay
    bool showReferenceGrid = true;    ///< "player/showreferencegrid"
    bool showBackingImages = true;    ///< "player/showbackingimages": images not attached to a body
    bool showBodyImages = true;       ///< "player/showbodyimages": images attached to bodies
    bool showFixtures = true;         ///< "player/showfixtures"
    bool showJointNubs = true;        ///< "player/showjointnubs"
    bool showBodyNubs = true;         ///< "player/showbodynubs"
    bool showRuler = false;           ///< "player/showruler"

    /// The toggles stored in the settings, defaults for missing keys.
    static PlayerDisplayToggles read(const QSettings& settings);
    /// Stores every toggle.
    void write(QSettings& settings) const;

    friend bool operator==(const PlayerDisplayToggles&, const PlayerDisplayToggles&) = default;
};
