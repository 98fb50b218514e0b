/* SPDX-License-Identifier: MIT */
/** @file
 * The bits of the error word that GetLastLibErr() returns. */
#ifndef ZELTAGAPI_ERRORS_H
#define ZELTAGAPI_ERRORS_H

#define ZELTAGAPI_ERR_NULL 0x1          /**< a null record was passed */
#define ZELTAGAPI_ERR_NEVER_READ 0x2    /**< the configuration was never read */
#define ZELTAGAPI_ERR_LINE_SIZE 256     /**< a buffer below 8 bytes, by the ASCII protocol */
#define ZELTAGAPI_ERR_LINE_CLOSED 257   /**< no open line, by the ASCII protocol */
#define ZELTAGAPI_ERR_LINE_ANSWER 261   /**< no whole answer, by the ASCII protocol */
#define ZELTAGAPI_ERR_READ 0x20000      /**< reading the configuration failed */
#define ZELTAGAPI_ERR_FIELD 0x20001     /**< a user field of a stripe reader failed */
#define ZELTAGAPI_ERR_WRITE 0x40000     /**< writing the configuration failed */
#define ZELTAGAPI_ERR_RESET 0x80000     /**< the reset could not be sent */
#define ZELTAGAPI_ERR_GET 0x100000      /**< a get of a record failed, with a reason */
#define ZELTAGAPI_ERR_SET 0x200000      /**< a set of a record failed, with a reason or a code */
#define ZELTAGAPI_ERR_SERVICE 0x1000000 /**< a report of a service failed */
#define ZELTAGAPI_ERR_ID_READ 0x1000000 /**< the identifier could not be read, or a null buffer */
#define ZELTAGAPI_ERR_SET_RADIO 0x20000000    /**< the radio could not be set */
#define ZELTAGAPI_ERR_GET_RADIO 0x40000000    /**< the radio could not be asked */
#define ZELTAGAPI_ERR_FILE_NAME 0x50000000    /**< the firmware file name could not be read */
#define ZELTAGAPI_ERR_FULL_VERSION 0x70000000 /**< the firmware version could not be read */
#define ZELTAGAPI_ERR_REFERENCE 0x80000000    /**< a key or file reference could not be written */
#define ZELTAGAPI_ERR_BLOB 0x81000000         /**< a report of a key blob failed */
#define ZELTAGAPI_ERR_BOOT_ENTRY 0x90100000   /**< the boot loader wasn't entered */
#define ZELTAGAPI_ERR_BOOT_REPLY 0x90200000   /**< the boot loader's reply was lost */
#define ZELTAGAPI_ERR_BOOT_REFUSED 0x90300000 /**< the boot loader refused to start */
#define ZELTAGAPI_ERR_BOOT_LINE 0x90400000    /**< a line was refused or never taken */
#define ZELTAGAPI_ERR_BOOT_DEVICE 0x90500000  /**< no proximity reader on USB */
#define ZELTAGAPI_ERR_BOOT_READER_REFUSED 0x90600000 /**< the reader refused a line */
#define ZELTAGAPI_ERR_BOOT_UNKNOWN_REPLY 0x90700000  /**< the reader's answer isn't known */
#define ZELTAGAPI_ERR_BOOT_FILE 0x90800000           /**< the firmware file can't be opened */
#define ZELTAGAPI_ERR_BOOT_FRAME 0x90900000          /**< a frame of a line could not be sent */
#define ZELTAGAPI_ERR_INTEGRITY 0x91000000 /**< a file's trailer doesn't hold, or isn't made */

#endif
