/* The generic doubly linked list of untyped pointers. It never owns or frees
 * the values it holds. Every operation tolerates a null list. */
#ifndef VELATRIX_LIST_H
#define VELATRIX_LIST_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

typedef struct velatrix_list_node {
    void* value;
    struct velatrix_list_node* next;
    struct velatrix_list_node* previous;
} velatrix_list_node;

typedef struct velatrix_list {
    velatrix_list_node* head;
    velatrix_list_node* tail;
} velatrix_list;

VELATRIX_API velatrix_list* velatrix_create_list(void);
VELATRIX_API void velatrix_list_free(velatrix_list* list);
VELATRIX_API velatrix_list_node* velatrix_list_add(velatrix_list* list, void* value);
VELATRIX_API int velatrix_list_remove(velatrix_list* list, velatrix_list_node* node);
VELATRIX_API uint32_t velatrix_list_count(const velatrix_list* list);
VELATRIX_API velatrix_list_node* velatrix_list_find(const velatrix_list* list, const void* value);
VELATRIX_API int velatrix_list_remove_ptr(velatrix_list* list, const void* value);

VELATRIX_END_DECLS

#endif
