// The one table class, behind every IMAPITable.
#pragma once

#include "standin/mapi/RowList.h"

namespace standin::mapi {

/// A new table over these rows. With `wide` its text columns are PT_UNICODE until SetColumns says otherwise.
IMAPITable* MakeTable(std::unique_ptr<TableRows> rows, bool wide);

} // namespace standin::mapi
