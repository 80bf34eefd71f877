#include "editing/editmode.h"

namespace
{
struct ModeInfo
{
    const char* word;
    ItemKind kind;
    char key;
};

constexpr ModeInfo kModes[kEditModeCount] = {
    {"bodies", ItemKind::Body, 'B'},      {"fixtures", ItemKind::Fixture, 'F'}, {"vertices", ItemKind::Fixture, 'V'},
    {"joints", ItemKind::Joint, 'J'},     {"images", ItemKind::Image, 'I'},     {"samplers", ItemKind::Sampler, 'P'},
    {"objects", ItemKind::Object, 'O'},
};
} // namespace

QString editModeWord(EditMode mode)
{
    return QString::fromLatin1(kModes[int(mode)].word);
}

EditMode editModeFromWord(const QString& word)
{
    for (int i = 0; i < kEditModeCount; ++i) {
        if (word == QLatin1String(kModes[i].word))
            return EditMode(i);
    }
    return EditMode::Bodies;
}

ItemKind editModeItemKind(EditMode mode)
{
    return kModes[int(mode)].kind;
}

char editModeKey(EditMode mode)
{
    return kModes[int(mode)].key;
}
