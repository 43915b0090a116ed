#import "Scenes.h"

#import "ControlsScene.h"

const std::vector<Scene> &Scenes() {
  static const std::vector<Scene> scenes = {
      {"gallery", MakeControlsWindow},
  };
  return scenes;
}
