<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'
	xmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'
	xmlns:rs='urn:schemas-microsoft-com:rowset'
	xmlns:z='#RowsetSchema'>
<s:Schema id='RowsetSchema'>
	<s:ElementType name='row' content='eltOnly' rs:updatable='true'>
		<s:AttributeType name='Id' rs:number='1' rs:nullable='true' rs:write='true'>
			<s:datatype dt:type='int' dt:maxLength='4' rs:precision='0' rs:fixedlength='true' rs:maybenull='false'/>
		</s:AttributeType>
		<s:AttributeType name='Nombre' rs:number='2' rs:nullable='true' rs:write='true'>
			<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='50' rs:precision='0' rs:maybenull='false'/>
		</s:AttributeType>
		<s:AttributeType name='Fecha' rs:number='3' rs:nullable='true' rs:write='true'>
			<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='10' rs:precision='0' rs:maybenull='false'/>
		</s:AttributeType>
		<s:AttributeType name='IdDescripcionSensores' rs:number='4' rs:nullable='true' rs:write='true'>
			<s:datatype dt:type='int' dt:maxLength='4' rs:precision='0' rs:fixedlength='true' rs:maybenull='false'/>
		</s:AttributeType>
		<s:AttributeType name='TipoSensor' rs:number='5' rs:nullable='true' rs:write='true'>
			<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='30' rs:precision='0' rs:maybenull='false'/>
		</s:AttributeType>
		<s:AttributeType name='Parametros' rs:number='6' rs:nullable='true' rs:write='true'>
			<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='255' rs:precision='0' rs:maybenull='false'/>
		</s:AttributeType>
		<s:extends type='rs:rowbase'/>
	</s:ElementType>
</s:Schema>
<rs:data>
	<z:row Id='1' Nombre='Río de llanura, 0 a 10 m' Fecha='14/03/2026' IdDescripcionSensores='1' TipoSensor='Analógico'
		 Parametros='5#5#15#60#2#720#10#0#0.5#0.5#1#6.5#0#0.5#0.5#0.1#0.1#0'/>
	<z:row Id='2' Nombre='Río de montaña, 0 a 5 m' Fecha='14/03/2026' IdDescripcionSensores='1' TipoSensor='Analógico'
		 Parametros='1#1#5#30#1#360#5#0#2#2#1#3.5#0#1#1#0.05#0.05#0'/>
	<z:row Id='3' Nombre='Embalse, 0 a 30 m' Fecha='02/06/2026' IdDescripcionSensores='1' TipoSensor='Analógico'
		 Parametros='15#15#60#240#5#720#30#0#0.2#0.2#1#28.5#0#0.1#0.1#0.02#0.02#0'/>
	<z:row Id='4' Nombre='Temperatura del aire, -20 a 50 °C' Fecha='14/03/2026' IdDescripcionSensores='2' TipoSensor='Meteorológico'
		 Parametros='10#10#10#60#2#720#1#50#-20#40#-5#5#5#45#-10#45#-10'/>
	<z:row Id='5' Nombre='Humedad relativa, 0 a 100 %' Fecha='14/03/2026' IdDescripcionSensores='2' TipoSensor='Meteorológico'
		 Parametros='10#10#10#60#2#720#0#100#0#98#10#20#20#100#5#100#5'/>
	<z:row Id='6' Nombre='Velocidad del viento, hasta 60 m/s' Fecha='02/06/2026' IdDescripcionSensores='2' TipoSensor='Meteorológico'
		 Parametros='1#10#10#60#1#720#1#60#0#25#0.5#10#10#35#0.5#35#0.5'/>
	<z:row Id='7' Nombre='Batería de 12 V' Fecha='14/03/2026' IdDescripcionSensores='3' TipoSensor='Supervisión Analógica'
		 Parametros='10#720#1#15#10#14.8#11.5'/>
	<z:row Id='8' Nombre='Panel solar' Fecha='02/06/2026' IdDescripcionSensores='3' TipoSensor='Supervisión Analógica'
		 Parametros='30#720#0#25#0#22#0'/>
	<z:row Id='9' Nombre='Lluvia, cada 5 minutos' Fecha='14/03/2026' IdDescripcionSensores='4' TipoSensor='Pluviométrico'
		 Parametros='5#5#5#60#1440#50#1'/>
	<z:row Id='10' Nombre='Lluvia intensa, cada minuto' Fecha='02/06/2026' IdDescripcionSensores='4' TipoSensor='Pluviométrico'
		 Parametros='1#1#1#15#1440#20#0.5'/>
	<z:row Id='11' Nombre='Puerta de la casilla' Fecha='14/03/2026' IdDescripcionSensores='5' TipoSensor='Supervisión Digital'
		 Parametros='1#60#1#0'/>
	<z:row Id='12' Nombre='Flotante de nivel' Fecha='02/06/2026' IdDescripcionSensores='5' TipoSensor='Supervisión Digital'
		 Parametros='5#720#1#1'/>
</rs:data>
</xml>