/* A C program as a user of the installed library writes it: lists the pads
 * (a virtual one, from VELATRIX_SIMULATE) and exits 0 when it saw one. */
#include <velatrix-quillmark.h>
#include <stdio.h>

int main(void) {
    velatrix_init();
    velatrix_device* head = NULL;
    velatrix_list_devices(&head);
    const unsigned count = velatrix_count_device_list(head);
    for (velatrix_device* d = head; d != NULL; d = d->next) printf("%s %s\n", d->path, d->model ? d->model : "-");
    velatrix_free_device_list(head);
    velatrix_destroy();
    return count > 0 ? 0 : 1;
}
