// What For Each walks a collection with.
#pragma once

#include "standin/outlook/automation/Collection.h"

namespace standin::outlook {

/// An IEnumVARIANT at the start of a collection. It is live: it sees what comes and goes meanwhile.
ComPtr<IUnknown> MakeEnumerator(ComPtr<Collection> collection);

} // namespace standin::outlook
