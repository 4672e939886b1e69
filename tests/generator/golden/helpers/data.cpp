// Helpers of the area: Blocks and cells.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "helpers.h"

#include "helpers/cells.h"
#include "helpers/dump.h"
#include "helpers/records.h"
#include "record_numbers.h"

using namespace qxsh;

void qx_data_free(void *data)
{
    free_block(data);
}

unsigned long long *qx_uint64_create(unsigned long long data)
{
    return create_cell(data);
}

unsigned long long qx_uint64_get(unsigned long long *ptr)
{
    return read_printed_cell(ptr, 0);
}

unsigned int *qx_uint32_create(unsigned int data)
{
    return create_cell(data);
}

unsigned int qx_uint32_get(unsigned int *ptr)
{
    return read_cell(ptr, 0);
}

unsigned int *qx_uint32_array_create(unsigned int data, unsigned int size)
{
    return create_cell_array(data, size);
}

unsigned int qx_uint32_array_get(unsigned int *ptr, unsigned int index)
{
    return read_cell(ptr, index);
}

void qx_uint32_array_set(unsigned int *ptr, unsigned int data, unsigned int index)
{
    write_cell(ptr, data, index);
}

unsigned long long *qx_uint64_array_create(unsigned long long data, unsigned int size)
{
    return create_cell_array(data, size);
}

unsigned long long qx_uint64_array_get(unsigned long long *ptr, unsigned int index)
{
    return read_printed_cell(ptr, index);
}

void qx_uint64_array_set(unsigned long long *ptr, unsigned long long data, unsigned int index)
{
    write_cell(ptr, data, index);
}

unsigned char *qx_uint8_create(unsigned char data)
{
    return create_cell(data);
}

unsigned char qx_uint8_get(unsigned char *ptr)
{
    return read_cell(ptr, 0);
}

unsigned char *qx_uint8_array_create(unsigned char data, unsigned int size)
{
    return create_cell_array(data, size);
}

unsigned char qx_uint8_array_get(unsigned char *ptr, unsigned int index)
{
    return read_cell(ptr, index);
}

void qx_uint8_array_set(unsigned char *ptr, unsigned char data, unsigned int index)
{
    write_cell(ptr, data, index);
}

int *qx_int32_create(int data)
{
    return create_cell(data);
}

int qx_int32_get(int *ptr)
{
    return read_cell(ptr, 0);
}

int *qx_int32_array_create(int data, unsigned int size)
{
    return create_cell_array(data, size);
}

int qx_int32_array_get(int *ptr, unsigned int index)
{
    return read_cell(ptr, index);
}

void qx_int32_array_set(int *ptr, int data, unsigned int index)
{
    write_cell(ptr, data, index);
}
