#pragma once

namespace celldesk {
class Application;
}

namespace celldesk::bench {

/// The application object that the measured windows need: made when first asked for, there until the process
/// ends.
Application& WindowApplication();

}  // namespace celldesk::bench
