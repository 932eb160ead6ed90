// The scenes of the demo: the steps of each, as in a scenario, and their expected results.
#pragma once

#include <string>
#include <vector>

namespace quorvantis::tool {

struct Scene {
  std::string title;
  std::string about;
  std::string steps;                 ///< JSON Lines, as `run` takes them
  std::vector<std::string> mustSee;  ///< moments (see demo_story.h), in this order
  std::vector<std::string> mustNotSee;
};

struct Act {
  std::string title;
  std::vector<Scene> scenes;
};

const std::vector<Act>& demoActs();

}  // namespace quorvantis::tool
