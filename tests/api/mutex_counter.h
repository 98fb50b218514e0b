/* SPDX-License-Identifier: MIT */
/* Counts the recursive mutexes that a program and its libraries initialise and destroy: start-up of
 * the library initialises one, shut-down destroys it. */
#ifndef MUTEX_COUNTER_H
#define MUTEX_COUNTER_H

int mutexesInitialised(void);
int mutexesDestroyed(void);

#endif
