// The selection's vertex look-ups stay right through inserted and removed vertices.
#include "editing/selection.h"

#include <gtest/gtest.h>

TEST(Selection, VertexLookUpsFollowTheListThroughShifts)
{
    Selection selection;
    EXPECT_TRUE(selection.addVertex(7, 1));
    EXPECT_TRUE(selection.addVertex(7, 4));
    EXPECT_TRUE(selection.addVertex(9, 4));
    EXPECT_FALSE(selection.addVertex(7, 4)) << "already selected";
    EXPECT_TRUE(selection.containsVertex(9, 4));
    EXPECT_FALSE(selection.containsVertex(9, 1));

    // A vertex inserted at 2 of fixture 7 moves its vertex 4 to 5 only.
    selection.vertexIndexShifted(7, 2, 1);
    EXPECT_TRUE(selection.containsVertex(7, 1));
    EXPECT_FALSE(selection.containsVertex(7, 4));
    EXPECT_TRUE(selection.containsVertex(7, 5));
    EXPECT_TRUE(selection.containsVertex(9, 4));

    // Removing vertex 1 deselects it and moves 5 back to 4.
    selection.vertexIndexShifted(7, 1, -1);
    EXPECT_FALSE(selection.containsVertex(7, 1));
    EXPECT_TRUE(selection.containsVertex(7, 4));
    EXPECT_FALSE(selection.containsVertex(7, 5));
    ASSERT_EQ(selection.vertices().size(), 2u);
    EXPECT_EQ(selection.vertices()[0], (Selection::VertexRef{7, 4}));
    EXPECT_EQ(selection.vertices()[1], (Selection::VertexRef{9, 4}));

    EXPECT_TRUE(selection.removeVertex(9, 4));
    EXPECT_FALSE(selection.removeVertex(9, 4));
    EXPECT_FALSE(selection.containsVertex(9, 4));
    EXPECT_TRUE(selection.addVertex(9, 4)) << "selectable again after removal";
    selection.clear();
    EXPECT_FALSE(selection.containsVertex(7, 4));
    EXPECT_TRUE(selection.vertices().empty());
}
