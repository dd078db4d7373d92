/* A C application on the shared library that ends in one of the ways a
 * program ends, with the hot-plug thread running: returning from main
 * without velatrix_destroy, returning after it, or exit() from another
 * thread while the hot-plug thread waits out the settle time of a pad just
 * plugged. It prints how many pads it listed. */
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "velatrix-quillmark.h"
#include "velatrix-virtual.h"

/* Never called: exit stops the hot-plug thread before its dispatch. */
static int on_hotplug(uint32_t event, const char* path) {
    printf("hot-plug callback %u %s\n", event, path);
    fflush(stdout);
    return 0;
}

static void* plug_and_exit(void* unused) {
    (void)unused;
    velatrix_virtual_plug("mono-320");
    usleep(100 * 1000); /* the hot-plug thread is now in its settle wait */
    exit(0);
}

int main(int argc, char** argv) {
    const char* mode = argc > 1 ? argv[1] : "";
    velatrix_device* head = NULL;
    pthread_t thread;
    /* A hang at exit must fail, not block the test run. */
    alarm(20);
    velatrix_virtual_simulate(2);
    velatrix_init();
    velatrix_list_devices(&head);
    printf("listed %u pads\n", velatrix_count_device_list(head));
    fflush(stdout);
    velatrix_free_device_list(head);
    if (strcmp(mode, "destroy") == 0) {
        velatrix_destroy();
        printf("wait %d\n", velatrix_real_driver.thread_wait());
    } else if (strcmp(mode, "thread-exit") == 0) {
        velatrix_register_hotplug_callback(&on_hotplug);
        if (pthread_create(&thread, NULL, plug_and_exit, NULL) != 0) return 2;
        pthread_join(thread, NULL);
        return 3; /* never reached: exit() ends the process */
    }
    return 0;
}
