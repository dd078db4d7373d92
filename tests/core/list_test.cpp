#include <gtest/gtest.h>

#include "velatrix/list.h"

namespace {

struct ListFixture : ::testing::Test {
    velatrix_list* list = velatrix_create_list();
    int a = 1, b = 2, c = 3;
    ~ListFixture() override { velatrix_list_free(list); }
};

TEST_F(ListFixture, AddAppendsAtTailAndLinksBothWays) {
    velatrix_list_node* first = velatrix_list_add(list, &a);
    velatrix_list_node* second = velatrix_list_add(list, &b);
    EXPECT_EQ(list->head, first);
    EXPECT_EQ(list->tail, second);
    EXPECT_EQ(first->next, second);
    EXPECT_EQ(second->previous, first);
    EXPECT_EQ(first->previous, nullptr);
    EXPECT_EQ(second->next, nullptr);
    EXPECT_EQ(velatrix_list_count(list), 2u);
}

TEST_F(ListFixture, RemovingOnlyHeadOrTailKeepsEndsConsistent) {
    velatrix_list_node* only = velatrix_list_add(list, &a);
    EXPECT_EQ(velatrix_list_remove(list, only), 1);
    EXPECT_EQ(list->head, nullptr);
    EXPECT_EQ(list->tail, nullptr);

    velatrix_list_node* first = velatrix_list_add(list, &a);
    velatrix_list_node* middle = velatrix_list_add(list, &b);
    velatrix_list_node* last = velatrix_list_add(list, &c);
    velatrix_list_remove(list, first);
    EXPECT_EQ(list->head, middle);
    EXPECT_EQ(middle->previous, nullptr);
    velatrix_list_remove(list, last);
    EXPECT_EQ(list->tail, middle);
    EXPECT_EQ(middle->next, nullptr);
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
