/* SPDX-License-Identifier: MIT */
/* A door that opens to one card: the part of an application that is to be tested. */
#ifndef DOOR_H
#define DOOR_H

enum Door {
    DOOR_CLOSED,   /* no card, or a stranger's */
    DOOR_OPEN,     /* the card is welcome */
    DOOR_NO_READER /* the reader doesn't answer */
};

/* 1 when a reader was found. */
int doorConnect(void);
void doorDisconnect(void);

/* One look into the field. */
enum Door doorLook(void);

#endif
