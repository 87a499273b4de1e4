#pragma once

namespace ostrova::demo {

/// The program ostrova-demo-site: serves the site on the loopback until it is told to end, or
/// writes an archive. The exit status.
int RunDemoSite(int argc, char** argv);

}  // namespace ostrova::demo
