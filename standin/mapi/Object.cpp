// What becomes of dead objects.
#include "standin/mapi/Object.h"

#include "standin/watch/Graves.h"

namespace standin::mapi {

void Bury(void* memory, std::size_t size, const wchar_t* interfaceName) {
    standin::Bury(memory, size, {interfaceName, MAPI_E_INVALID_OBJECT});
}

} // namespace standin::mapi
