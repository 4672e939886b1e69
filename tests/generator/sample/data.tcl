# Cells of two widths, in a scattered order, and the release of blocks.
area data "Blocks and cells"
free    qx_data_free data "release a block"
pointer char "a type without commands"
cell uint64 u64 { create get }
cell uint32 u32 { create get array_create array_get array_set }
cell uint64 u64 { array_create array_get array_set }
cell uint8  u8  { create get array_create array_get array_set }
cell int32  i32 { create get array_create array_get array_set }
