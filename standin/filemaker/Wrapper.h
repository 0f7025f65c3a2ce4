// What the host's switches and the operations of FMWrapper.dll share.
#pragma once

namespace standin::filemaker {

class Registrar;

/// Where functions are registered; null while no host is at work.
Registrar* CurrentRegistrar();

} // namespace standin::filemaker
