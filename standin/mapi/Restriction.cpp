// The kinds of restriction ([MS-OXCDATA] 2.12).
#include "standin/mapi/Restriction.h"

#include "standin/mapi/Comparison.h"
#include "standin/mapi/Values.h"

#include <algorithm>

namespace standin::mapi {
namespace {

using mailbox::PropertyTag;
using mailbox::PropertyType;
using mailbox::TypeOf;
using mailbox::Value;
using RestrictionPtr = std::unique_ptr<Restriction>;

constexpr int kDeepestNesting = 256;

/// How a table spells out that a column is multi-valued and meant as a whole or entry by entry.
constexpr PropertyTag WithoutInstance(PropertyTag tag) {
    return tag & ~PropertyTag{MV_INSTANCE};
}

class And final : public Restriction {
public:
    explicit And(std::vector<RestrictionPtr> parts) : m_parts(std::move(parts)) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        return std::ranges::all_of(m_parts, [&](const auto& part) { return part->IsMetBy(row); });
    }

private:
    std::vector<RestrictionPtr> m_parts;
};

class Or final : public Restriction {
public:
    explicit Or(std::vector<RestrictionPtr> parts) : m_parts(std::move(parts)) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        return std::ranges::any_of(m_parts, [&](const auto& part) { return part->IsMetBy(row); });
    }

private:
    std::vector<RestrictionPtr> m_parts;
};

class Not final : public Restriction {
public:
    explicit Not(RestrictionPtr part) : m_part(std::move(part)) {}
    bool IsMetBy(const RestrictedRow& row) const override { return !m_part->IsMetBy(row); }

private:
    RestrictionPtr m_part;
};

class Content final : public Restriction {
public:
    Content(PropertyTag tag, ULONG level, Value pattern)
        : m_tag(tag), m_level(level), m_pattern(std::move(pattern)) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        Value value;
        return SUCCEEDED(row.Read(m_tag, value)) && HoldsContent(m_level, value, m_pattern);
    }

private:
    PropertyTag m_tag;
    ULONG m_level;
    Value m_pattern;
};

class PropertyRelation final : public Restriction {
public:
    PropertyRelation(PropertyTag tag, ULONG relation, Value value)
        : m_tag(tag), m_relation(relation), m_value(std::move(value)) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        Value value;
        if (FAILED(row.Read(m_tag, value)))
            return false;
        const bool isSingle = !(mailbox::TypeOf(m_value) & MV_FLAG);
        return isSingle && (TypeOf(m_tag) & MV_FLAG) ? AnyHolds(m_relation, value, m_value)
                                                     : Holds(m_relation, value, m_value);
    }

private:
    PropertyTag m_tag;
    ULONG m_relation;
    Value m_value;
};

class CompareProperties final : public Restriction {
public:
    CompareProperties(PropertyTag left, ULONG relation, PropertyTag right)
        : m_left(left), m_relation(relation), m_right(right) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        Value left;
        Value right;
        return SUCCEEDED(row.Read(m_left, left)) && SUCCEEDED(row.Read(m_right, right)) &&
               Holds(m_relation, left, right);
    }

private:
    PropertyTag m_left;
    ULONG m_relation;
    PropertyTag m_right;
};

class BitMask final : public Restriction {
public:
    BitMask(PropertyTag tag, ULONG mask, bool wantsBits) : m_tag(tag), m_mask(mask), m_wantsBits(wantsBits) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        Value value;
        if (FAILED(row.Read(m_tag, value)))
            return false;
        const auto* bits = std::get_if<std::int32_t>(&value);
        return bits && ((static_cast<ULONG>(*bits) & m_mask) != 0) == m_wantsBits;
    }

private:
    PropertyTag m_tag;
    ULONG m_mask;
    bool m_wantsBits;
};

class Size final : public Restriction {
public:
    Size(PropertyTag tag, ULONG relation, ULONG size)
        : m_tag(tag), m_relation(relation), m_size(static_cast<std::int64_t>(size)) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        Value value;
        return SUCCEEDED(row.Read(m_tag, value)) &&
               Holds(m_relation, static_cast<std::int64_t>(PropertySize(value)), m_size);
    }

private:
    PropertyTag m_tag;
    ULONG m_relation;
    Value m_size;
};

class Exist final : public Restriction {
public:
    explicit Exist(PropertyTag tag) : m_tag(tag) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        Value value;
        return SUCCEEDED(row.Read(m_tag, value));
    }

private:
    PropertyTag m_tag;
};

class Sub final : public Restriction {
public:
    Sub(PropertyTag subobject, RestrictionPtr part) : m_subobject(subobject), m_part(std::move(part)) {}
    bool IsMetBy(const RestrictedRow& row) const override {
        return row.AnyRowOf(m_subobject, [&](const RestrictedRow& each) { return m_part->IsMetBy(each); });
    }

private:
    PropertyTag m_subobject;
    RestrictionPtr m_part;
};

/// Takes restrictions over, to a depth.
class Taker {
public:
    HRESULT Take(const SRestriction* source, RestrictionPtr& taken) {
        if (!source)
            return MAPI_E_INVALID_PARAMETER;
        if (m_depth == kDeepestNesting)
            return MAPI_E_TOO_COMPLEX;
        ++m_depth;
        const HRESULT status = TakeKind(*source, taken);
        --m_depth;
        return status;
    }

private:
    HRESULT TakeKind(const SRestriction& source, RestrictionPtr& taken) {
        switch (source.rt) {
        case RES_AND:
            return TakeList<And>(source.res.resAnd.cRes, source.res.resAnd.lpRes, taken);
        case RES_OR:
            return TakeList<Or>(source.res.resOr.cRes, source.res.resOr.lpRes, taken);
        case RES_NOT:
            return TakeNot(source.res.resNot, taken);
        case RES_CONTENT:
            return TakeContent(source.res.resContent, taken);
        case RES_PROPERTY:
            return TakeProperty(source.res.resProperty, taken);
        case RES_COMPAREPROPS:
            return TakeCompare(source.res.resCompareProps, taken);
        case RES_BITMASK:
            return TakeBitMask(source.res.resBitMask, taken);
        case RES_SIZE:
            return TakeSize(source.res.resSize, taken);
        case RES_EXIST:
            return Make<Exist>(taken, WithoutInstance(source.res.resExist.ulPropTag));
        case RES_SUBRESTRICTION:
            return TakeSub(source.res.resSub, taken);
        case RES_COMMENT:
            return TakeComment(source.res.resComment, taken);
        default:
            return MAPI_E_TOO_COMPLEX;
        }
    }

    template <class Kind, class... Arguments>
    static HRESULT Make(RestrictionPtr& taken, Arguments&&... arguments) {
        taken = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
        return S_OK;
    }

    template <class Kind>
    HRESULT TakeList(ULONG count, const SRestriction* list, RestrictionPtr& taken) {
        if (count > 0 && !list)
            return MAPI_E_INVALID_PARAMETER;
        std::vector<RestrictionPtr> parts(count);
        for (ULONG i = 0; i < count; ++i)
            if (const HRESULT status = Take(&list[i], parts[i]); FAILED(status))
                return status;
        return Make<Kind>(taken, std::move(parts));
    }

    HRESULT TakeNot(const SNotRestriction& source, RestrictionPtr& taken) {
        RestrictionPtr part;
        const HRESULT status = Take(source.lpRes, part);
        return FAILED(status) ? status : Make<Not>(taken, std::move(part));
    }

    /// The value that a restriction compares with. Its type is the tag's, or that of one entry of it.
    static HRESULT TakeOperand(PropertyTag tag, const SPropValue* source, Value& value) {
        if (!source)
            return MAPI_E_INVALID_PARAMETER;
        const PropertyType type = TypeOf(source->ulPropTag);
        if (type != TypeOf(tag) && type != (TypeOf(tag) & ~MV_FLAG))
            return MAPI_E_TOO_COMPLEX;
        return TakeValue(*source, value);
    }

    static HRESULT TakeContent(const SContentRestriction& source, RestrictionPtr& taken) {
        const PropertyTag tag = WithoutInstance(source.ulPropTag);
        const PropertyType single = TypeOf(tag) & ~MV_FLAG;
        if (!mailbox::IsText(single) && single != PT_BINARY)
            return MAPI_E_TOO_COMPLEX;
        if (LOWORD(source.ulFuzzyLevel) > FL_PREFIX)
            return MAPI_E_TOO_COMPLEX;
        Value pattern;
        const HRESULT status = TakeOperand(tag, source.lpProp, pattern);
        return FAILED(status) ? status : Make<Content>(taken, tag, source.ulFuzzyLevel, std::move(pattern));
    }

    static HRESULT TakeProperty(const SPropertyRestriction& source, RestrictionPtr& taken) {
        const PropertyTag tag = WithoutInstance(source.ulPropTag);
        if (!IsComparison(source.relop))
            return MAPI_E_TOO_COMPLEX;
        Value value;
        const HRESULT status = TakeOperand(tag, source.lpProp, value);
        return FAILED(status) ? status : Make<PropertyRelation>(taken, tag, source.relop, std::move(value));
    }

    static HRESULT TakeCompare(const SComparePropsRestriction& source, RestrictionPtr& taken) {
        if (!IsComparison(source.relop))
            return MAPI_E_TOO_COMPLEX;
        if (TypeOf(source.ulPropTag1) != TypeOf(source.ulPropTag2))
            return MAPI_E_TOO_COMPLEX;
        return Make<CompareProperties>(taken, source.ulPropTag1, source.relop, source.ulPropTag2);
    }

    static HRESULT TakeBitMask(const SBitMaskRestriction& source, RestrictionPtr& taken) {
        if (TypeOf(source.ulPropTag) != PT_LONG || source.relBMR > BMR_NEZ)
            return MAPI_E_TOO_COMPLEX;
        return Make<BitMask>(taken, source.ulPropTag, source.ulMask, source.relBMR == BMR_NEZ);
    }

    static HRESULT TakeSize(const SSizeRestriction& source, RestrictionPtr& taken) {
        if (!IsComparison(source.relop))
            return MAPI_E_TOO_COMPLEX;
        return Make<Size>(taken, source.ulPropTag, source.relop, source.cb);
    }

    HRESULT TakeSub(const SSubRestriction& source, RestrictionPtr& taken) {
        if (source.ulSubObject != PR_MESSAGE_RECIPIENTS && source.ulSubObject != PR_MESSAGE_ATTACHMENTS)
            return MAPI_E_TOO_COMPLEX;
        RestrictionPtr part;
        const HRESULT status = Take(source.lpRes, part);
        return FAILED(status) ? status : Make<Sub>(taken, source.ulSubObject, std::move(part));
    }

    /// A comment restricts nothing; there may be something within it that does.
    HRESULT TakeComment(const SCommentRestriction& source, RestrictionPtr& taken) {
        return source.lpRes ? Take(source.lpRes, taken) : Make<And>(taken, std::vector<RestrictionPtr>());
    }

    int m_depth = 0;
};

} // namespace

HRESULT TakeRestriction(const SRestriction* source, std::unique_ptr<Restriction>& restriction) {
    return Taker().Take(source, restriction);
}

} // namespace standin::mapi
