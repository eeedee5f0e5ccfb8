#pragma once

#include_next <spawn.h>

// What of <spawn.h> is this system's own; the calls go through fakes that do on Linux what these flags mean.
constexpr short POSIX_SPAWN_CLOEXEC_DEFAULT = 0x4000;

int posix_spawn_file_actions_addinherit_np(posix_spawn_file_actions_t* actions, int descriptor);

int fake_spawnattr_setflags(posix_spawnattr_t* attributes, short flags);
int fake_spawnattr_setsigdefault(posix_spawnattr_t* attributes, const sigset_t* signals);
int fake_spawn_actions_adddup2(posix_spawn_file_actions_t* actions, int descriptor, int other);
int fake_spawn_actions_destroy(posix_spawn_file_actions_t* actions);
int fake_spawnattr_destroy(posix_spawnattr_t* attributes);
int fake_spawn(pid_t* pid, const char* path, const posix_spawn_file_actions_t* actions,
               const posix_spawnattr_t* attributes, char* const arguments[], char* const environment[]);

#define posix_spawnattr_setflags fake_spawnattr_setflags
#define posix_spawnattr_setsigdefault fake_spawnattr_setsigdefault
#define posix_spawn_file_actions_adddup2 fake_spawn_actions_adddup2
#define posix_spawn_file_actions_destroy fake_spawn_actions_destroy
#define posix_spawnattr_destroy fake_spawnattr_destroy
#define posix_spawn fake_spawn
