/* The public header is plain C99: this file includes it from C and checks
 * a few record sizes from the C side too. */
#include "velatrix-quillmark.h"

#include <stdio.h>
#include <string.h>

int main(void) {
    velatrix_list* list = velatrix_create_list();
    int value = 7;
    velatrix_list_add(list, &value);
    if (velatrix_list_count(list) != 1) return 1;
    velatrix_list_free(list);
    if (strcmp(velatrix_get_quillmark_version(), "2.0.98") != 0) return 2;
    if (sizeof(velatrix_hid_feature_version) != 10) return 3;
    puts("C header ok");
    return 0;
}
