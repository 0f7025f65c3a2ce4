// Reply, ReplyAll, Forward, Send.
#include "standin/outlook/items/Answers.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/Sending.h"

namespace standin::outlook {
namespace {

template <AnswerKind kind>
ComPtr<ItemObject> AnswerBy(ItemObject& item) {
    return Answer(item, kind);
}

void Send(ItemObject& item) {
    SendItem(item);
}

constexpr Row kRows[] = {
    {L"Forward", Get<AnswerBy<AnswerKind::Forward>>},
    {L"Reply", Get<AnswerBy<AnswerKind::Reply>>},
    {L"ReplyAll", Get<AnswerBy<AnswerKind::ReplyAll>>},
    {L"Send", Get<Send>},
};

} // namespace

constinit const std::span<const Row> kAnswerRows = kRows;

} // namespace standin::outlook
