// Which topics there are.
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr const std::span<const Row>* kTopics[] = {
    &kAnswerRows, &kBodyRows, &kDeliveryRows, &kFlagRows, &kItemCollectionRows, &kReminderRows,
};

} // namespace

constinit const std::span<const std::span<const Row>* const> kItemTopics = kTopics;

} // namespace standin::outlook
