// The operations of FMWrapper.dll on texts, numbers, data and vectors, and the registering of functions.
#include "Operations.h"

#include "Control.h"
#include "Operation.h"
#include "Wrapper.h"

#include <algorithm>

namespace standin::filemaker {

namespace {

/// A piece of a text, cut to what there is.
std::wstring_view Piece(const std::wstring& text, std::uint32_t start, std::uint32_t count) {
    return start < text.size() ? std::wstring_view(text).substr(start, count) : std::wstring_view();
}

/// The value at an index, an empty one behind the last.
Value At(const DataVectObject& vector, std::size_t index) {
    return index < vector.values.size() ? vector.values[index] : Value();
}

/// The object that the vector hands out for a value in one of its forms, made at first use.
template <typename Object, typename Make>
const typename Object::Handle* HandOut(std::map<std::size_t, const typename Object::Handle*>& handedOut,
                                       std::size_t index, Make make) {
    const auto [place, isNew] = handedOut.try_emplace(index, nullptr);
    if (isNew) {
        place->second = Objects().Of<Object>().Add(Object{make()}, Owner::Host);
    }
    return place->second;
}

bool IsNativeType(std::int32_t type) {
    return type >= static_cast<std::int32_t>(NativeType::Text) &&
           type <= static_cast<std::int32_t>(NativeType::Boolean);
}

} // namespace

QuadChar* FM_QuadChar_Constructor2(char first, char second, char third, char fourth, ErrorRecord* error) {
    const Operation call(L"FM_QuadChar", L"Constructor2", error);
    return call.Runs() ? Objects().Of<QuadCharObject>().Add({{first, second, third, fourth}}, Owner::PlugIn)
                       : nullptr;
}

void FM_QuadChar_Delete(QuadChar* id, ErrorRecord* error) {
    Operation(L"FM_QuadChar", L"Delete", error).Delete<QuadCharObject>(id);
}

Text* FM_Text_Constructor1(ErrorRecord* error) {
    const Operation call(L"FM_Text", L"Constructor1", error);
    return call.Runs() ? Objects().Of<TextObject>().Add({}, Owner::PlugIn) : nullptr;
}

void FM_Text_Delete(Text* text, ErrorRecord* error) {
    Operation(L"FM_Text", L"Delete", error).Delete<TextObject>(text);
}

void FM_Text_AssignUnicode(Text* text, const wchar_t* unicode, ErrorRecord* error) {
    Operation call(L"FM_Text", L"AssignUnicode", error);
    TextObject* object = call.FindOwn<TextObject>(text);
    if (!object) {
        return;
    }
    if (!unicode) {
        return call.Violate(L"no UTF-16 to assign");
    }
    object->content = unicode;
}

std::uint32_t FM_Text_GetSize(const Text* text, ErrorRecord* error) {
    Operation call(L"FM_Text", L"GetSize", error);
    const TextObject* object = call.Find<TextObject>(text);
    return object ? static_cast<std::uint32_t>(object->content.size()) : 0;
}

void FM_Text_GetUnicode(const Text* text, wchar_t* buffer, std::uint32_t start, std::uint32_t count,
                        ErrorRecord* error) {
    Operation call(L"FM_Text", L"GetUnicode", error);
    const TextObject* object = call.Find<TextObject>(text);
    if (!object) {
        return;
    }
    const std::wstring_view piece = Piece(object->content, start, count);
    if (!buffer && !piece.empty()) {
        return call.Violate(L"no buffer");
    }
    std::ranges::copy(piece, buffer);
}

std::uint32_t FM_Text_Find(const Text* text, const Text* what, std::uint32_t start, ErrorRecord* error) {
    Operation call(L"FM_Text", L"Find", error);
    const TextObject* object = call.Find<TextObject>(text);
    const TextObject* sought = call.Find<TextObject>(what);
    if (!object || !sought) {
        return 0;
    }
    const std::size_t position =
        sought->content.empty() ? std::wstring::npos : object->content.find(sought->content, start);
    return position == std::wstring::npos ? kNotFound : static_cast<std::uint32_t>(position);
}

void FM_Text_DeleteText(Text* text, std::uint32_t position, std::uint32_t count, ErrorRecord* error) {
    Operation call(L"FM_Text", L"DeleteText", error);
    TextObject* object = call.FindOwn<TextObject>(text);
    if (object && position < object->content.size()) {
        object->content.erase(position, count);
    }
}

std::uint32_t FM_DataVect_Size(const DataVect* vector, ErrorRecord* error) {
    Operation call(L"FM_DataVect", L"Size", error);
    const DataVectObject* object = call.Find<DataVectObject>(vector);
    return object ? static_cast<std::uint32_t>(object->values.size()) : 0;
}

const Text* FM_DataVect_AtAsText(const DataVect* vector, std::uint32_t index, ErrorRecord* error) {
    Operation call(L"FM_DataVect", L"AtAsText", error);
    DataVectObject* object = call.Find<DataVectObject>(vector);
    if (!object) {
        return nullptr;
    }
    const std::size_t place = std::min<std::size_t>(index, object->values.size());
    return HandOut<TextObject>(object->texts, place, [&] { return At(*object, place).AsText(); });
}

const FixPt* FM_DataVect_AtAsNumber(const DataVect* vector, std::uint32_t index, ErrorRecord* error) {
    Operation call(L"FM_DataVect", L"AtAsNumber", error);
    DataVectObject* object = call.Find<DataVectObject>(vector);
    if (!object) {
        return nullptr;
    }
    const std::size_t place = std::min<std::size_t>(index, object->values.size());
    return HandOut<FixPtObject>(object->numbers, place, [&] { return At(*object, place).AsNumber(); });
}

std::uint8_t FM_DataVect_AtAsBoolean(const DataVect* vector, std::uint32_t index, ErrorRecord* error) {
    Operation call(L"FM_DataVect", L"AtAsBoolean", error);
    const DataVectObject* object = call.Find<DataVectObject>(vector);
    return object && At(*object, index).AsBoolean() ? 1 : 0;
}

std::int32_t FM_FixPt_AsLong(const FixPt* number, ErrorRecord* error) {
    Operation call(L"FM_FixPt", L"AsLong", error);
    const FixPtObject* object = call.Find<FixPtObject>(number);
    return object ? object->number.AsLong() : 0;
}

const Locale* FM_Data_GetLocale(const Data* data, ErrorRecord* error) {
    Operation call(L"FM_Data", L"GetLocale", error);
    const DataObject* object = call.Find<DataObject>(data);
    return object ? object->locale : nullptr;
}

std::int16_t FM_Data_SetAsText(Data* data, const Text* text, const Locale* locale, std::int32_t nativeType,
                               ErrorRecord* error) {
    Operation call(L"FM_Data", L"SetAsText", error);
    DataObject* object = call.Find<DataObject>(data);
    const TextObject* content = call.Find<TextObject>(text);
    const LocaleObject* used = call.Find<LocaleObject>(locale);
    if (!call.Runs()) {
        return 0;
    }
    if (!object || !content || !used || !IsNativeType(nativeType)) {
        return kRefused;
    }
    object->text = content->content;
    object->usedLanguage = used->language;
    object->nativeType = nativeType;
    return 0;
}

std::int16_t FM_ExprEnv_RegisterExternalFunction(const QuadChar* pluginId, std::int16_t functionId,
                                                 const Text* name, const Text* prototype,
                                                 std::int16_t minimum, std::int16_t maximum,
                                                 std::uint32_t flags, ExternalFunction function,
                                                 ErrorRecord* error) {
    Operation call(L"FM_ExprEnv", L"RegisterExternalFunction", error);
    const QuadCharObject* plugin = call.Find<QuadCharObject>(pluginId);
    const TextObject* nameText = call.Find<TextObject>(name);
    const TextObject* prototypeText = call.Find<TextObject>(prototype);
    if (!call.Runs()) {
        return 0;
    }
    if (!function) {
        call.Violate(L"no function");
    }
    const bool countsFit = minimum >= 0 && (maximum == -1 || minimum <= maximum);
    if (!plugin || !nameText || !prototypeText || !function || !countsFit || !CurrentRegistrar()) {
        return kRefused;
    }
    CurrentRegistrar()->Register({plugin->characters, functionId, nameText->content, prototypeText->content,
                                  minimum, maximum, flags, function});
    return 0;
}

std::int16_t FM_ExprEnv_UnRegisterExternalFunction(const QuadChar* pluginId, std::int16_t functionId,
                                                   ErrorRecord* error) {
    Operation call(L"FM_ExprEnv", L"UnRegisterExternalFunction", error);
    const QuadCharObject* plugin = call.Find<QuadCharObject>(pluginId);
    if (!plugin || !CurrentRegistrar()) {
        return call.Runs() ? kRefused : 0;
    }
    return CurrentRegistrar()->Unregister(plugin->characters, functionId) ? 0 : kRefused;
}

} // namespace standin::filemaker
