#include "model/metabody.h"

MetaFixture* MetaBody::adoptFixture(std::unique_ptr<MetaFixture> fixture)
{
    if (world())
        return nullptr;
    fixture->m_body = this;
    m_fixtures.push_back(std::move(fixture));
    return m_fixtures.back().get();
}

QString MetaBody::typeWord(BodyType type)
{
    switch (type) {
    case BodyType::Static: return QStringLiteral("static");
    case BodyType::Kinematic: return QStringLiteral("kinematic");
    case BodyType::Dynamic: return QStringLiteral("dynamic");
    }
    return QStringLiteral("static");
}
