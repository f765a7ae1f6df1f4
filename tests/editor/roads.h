// The main roads through the editor, for each toolkit: a binary instantiates the suite with its own script.
#pragma once

#include "editor/editortest.h"

namespace orvenmod::test {

class EditorRoads : public testing::TestWithParam<MakeScript> {
protected:
    Database& database() { return stage.database(); }
    void TearDown() override { stage.finish(); }

    EditorStage stage{GetParam()};
};

}  // namespace orvenmod::test
