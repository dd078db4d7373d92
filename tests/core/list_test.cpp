#include <gtest/gtest.h>

#include <vector>

#include "velatrix/list.h"

namespace {

struct ListFixture : ::testing::Test {
    velatrix_list* list = velatrix_create_list();
    int a = 1, b = 2, c = 3;
    ~ListFixture() override { velatrix_list_free(list); }

    // The values from head to tail, then from tail to head: a wrong link or
    // a missing null at either end makes the two walks disagree.
    std::vector<void*> walk() const {
        std::vector<void*> values;
        for (velatrix_list_node* n = list->head; n != nullptr; n = n->next) values.push_back(n->value);
        for (velatrix_list_node* n = list->tail; n != nullptr; n = n->previous) values.push_back(n->value);
        return values;
    }
};

TEST_F(ListFixture, AddAppendsAtTailAndRemovingOnlyHeadOrTailKeepsEndsConsistent) {
    velatrix_list_node* only = velatrix_list_add(list, &a);
    EXPECT_EQ(walk(), (std::vector<void*>{&a, &a}));
    EXPECT_EQ(velatrix_list_remove(list, only), 1);
    EXPECT_TRUE(walk().empty());

    velatrix_list_node* first = velatrix_list_add(list, &a);
    velatrix_list_add(list, &b);
    velatrix_list_node* last = velatrix_list_add(list, &c);
    EXPECT_EQ(walk(), (std::vector<void*>{&a, &b, &c, &c, &b, &a}));
    EXPECT_EQ(velatrix_list_count(list), 3u);
    velatrix_list_remove(list, first);
    EXPECT_EQ(walk(), (std::vector<void*>{&b, &c, &c, &b}));
    velatrix_list_remove(list, last);
    EXPECT_EQ(walk(), (std::vector<void*>{&b, &b}));
    EXPECT_EQ(velatrix_list_count(list), 1u);
}

TEST_F(ListFixture, DuplicatesAreKeptAndRemovePtrTakesTheFirstFromHead) {
    velatrix_list_node* first = velatrix_list_add(list, &a);
    velatrix_list_add(list, &b);
    velatrix_list_node* again = velatrix_list_add(list, &a);
    EXPECT_EQ(velatrix_list_find(list, &a), first);
    EXPECT_EQ(velatrix_list_remove_ptr(list, &a), 1);
    EXPECT_EQ(velatrix_list_find(list, &a), again);
    EXPECT_EQ(velatrix_list_count(list), 2u);
    EXPECT_EQ(velatrix_list_remove_ptr(list, &c), 0);
    EXPECT_EQ(velatrix_list_count(list), 2u);
}

TEST(ListNullInput, EveryOperationToleratesNull) {
    int value = 0;
    EXPECT_EQ(velatrix_list_add(nullptr, &value), nullptr);
    EXPECT_EQ(velatrix_list_remove(nullptr, nullptr), 0);
    EXPECT_EQ(velatrix_list_count(nullptr), 0u);
    EXPECT_EQ(velatrix_list_find(nullptr, &value), nullptr);
    EXPECT_EQ(velatrix_list_remove_ptr(nullptr, &value), 0);
    velatrix_list_free(nullptr);
    velatrix_list* list = velatrix_create_list();
    EXPECT_EQ(velatrix_list_remove(list, nullptr), 0);
    velatrix_list_free(list);
}

}  // namespace
