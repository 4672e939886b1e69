include $(sort $(wildcard $(BR2_EXTERNAL_QXSH_PATH)/package/*/*.mk))
