#include "StoreRecord.h"

#include "StoreContext.h"
#include "StoreModel.h"

StoreRecord::StoreRecord(StoreEntityKind kind)
    : m_kind(kind)
{
    const auto &entity = StoreModel::entity(kind);
    m_values.reserve(entity.attributes.size());
    for (const auto &attribute : entity.attributes) {
        switch (attribute.type) {
        case StoreModel::AttributeType::Text:
            m_values.append(QString(QLatin1String("")));
            break;
        case StoreModel::AttributeType::Integer:
            m_values.append(qint64(0));
            break;
        case StoreModel::AttributeType::Boolean:
            m_values.append(false);
            break;
        case StoreModel::AttributeType::Date:
            m_values.append(QDateTime());
            break;
        }
    }
}

void StoreRecord::setValue(int attribute, const QVariant &value)
{
    if (attribute < 0 || attribute >= m_values.size())
        return;
    const auto type = StoreModel::entity(m_kind).attributes.at(attribute).type;
    switch (type) {
    case StoreModel::AttributeType::Text:
        m_values[attribute] = value.toString();
        break;
    case StoreModel::AttributeType::Integer:
        m_values[attribute] = value.toLongLong();
        break;
    case StoreModel::AttributeType::Boolean:
        m_values[attribute] = value.toBool();
        break;
    case StoreModel::AttributeType::Date:
        m_values[attribute] = value.toDateTime();
        break;
    }
    if (m_deleted)
        return;
    m_changed = true;
    if (auto context = m_context.lock())
        context->recordDidChange(shared_from_this());
}
