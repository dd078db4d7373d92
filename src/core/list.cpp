#include "velatrix/list.h"

#include <cstdlib>

extern "C" {

velatrix_list* velatrix_create_list(void) {
    return static_cast<velatrix_list*>(std::calloc(1, sizeof(velatrix_list)));
}

void velatrix_list_free(velatrix_list* list) {
    if (list == nullptr) return;
    velatrix_list_node* node = list->head;
    while (node != nullptr) {
        velatrix_list_node* next = node->next;
        std::free(node);
        node = next;
    }
    std::free(list);
}

velatrix_list_node* velatrix_list_add(velatrix_list* list, void* value) {
    if (list == nullptr) return nullptr;
    auto* node = static_cast<velatrix_list_node*>(std::calloc(1, sizeof(velatrix_list_node)));
    if (node == nullptr) return nullptr;
    node->value = value;
    node->previous = list->tail;
    if (list->tail != nullptr) {
        list->tail->next = node;
    } else {
        list->head = node;
    }
    list->tail = node;
    return node;
}

int velatrix_list_remove(velatrix_list* list, velatrix_list_node* node) {
    if (list == nullptr || node == nullptr) return 0;
    if (node->previous != nullptr) {
        node->previous->next = node->next;
    } else {
        list->head = node->next;
    }
    if (node->next != nullptr) {
        node->next->previous = node->previous;
    } else {
        list->tail = node->previous;
    }
    std::free(node);
    return 1;
}

uint32_t velatrix_list_count(const velatrix_list* list) {
    if (list == nullptr) return 0;
    uint32_t count = 0;
    for (const velatrix_list_node* node = list->head; node != nullptr; node = node->next) ++count;
    return count;
}

velatrix_list_node* velatrix_list_find(const velatrix_list* list, const void* value) {
    if (list == nullptr) return nullptr;
    for (velatrix_list_node* node = list->head; node != nullptr; node = node->next) {
        if (node->value == value) return node;
    }
    return nullptr;
}

int velatrix_list_remove_ptr(velatrix_list* list, const void* value) {
    return velatrix_list_remove(list, velatrix_list_find(list, value));
}

}  // extern "C"
